// The one dispatch of a statement: which rule executes it.
#include "assembler/Assembly.h"
#include "assembler/ConditionalDirectives.h"
#include "assembler/ControlDirectives.h"
#include "assembler/DataDirectives.h"
#include "assembler/Directive.h"
#include "assembler/SymbolDirectives.h"
#include "assembler/WordKind.h"
#include "base/Text.h"
#include "base/TextHash.h"
#include "encoder/EraZ80Library.h"
#include "encoder/InstructionHandler.h"
#include "encoder/OperandReader.h"
#include "encoder/ZilogTranslator.h"

#include <array>
#include <functional>
#include <span>
#include <unordered_map>

namespace trident {
namespace {

constexpr LineCategory Expansion = LineCategory::MacExpand;

void OpenRept(Assembly& run, Statement& s) {
    run.MacroBlocks().OpenRepeat(run, s, BlockType::Rept);
}
void OpenIrp(Assembly& run, Statement& s) {
    run.MacroBlocks().OpenRepeat(run, s, BlockType::Irp);
}
void OpenIrpc(Assembly& run, Statement& s) {
    run.MacroBlocks().OpenRepeat(run, s, BlockType::Irpc);
}

// An endm with no block open closes nothing.
void StrayEnd(Assembly&, Statement&) {}

constexpr std::array<Directive, 7> MacroDirectives{{
    {"macro", LineCategory::MacDef,
     [](Assembly& run, Statement& s) { run.MacroBlocks().OpenMacro(run, s); }},
    {"rept", Expansion, OpenRept},
    {"irp", Expansion, OpenIrp},
    {"irpc", Expansion, OpenIrpc},
    {"local", Expansion, [](Assembly& run, Statement& s) { run.MacroBlocks().Local(run, s); }},
    {"exitm", Expansion, [](Assembly& run, Statement& s) { MacroProcessor::ExitMacro(run, s); }},
    {"endm", Expansion, StrayEnd},
}};

// Instruction statements are read in Zilog notation from .zilog on, in
// 8080 notation from .intel on.
void SwitchNotation(Assembly& run, Statement& s, bool zilog) {
    OperandReader(run, s).CheckOperandCount(0);
    run.State().ZilogNotation = zilog;
}

constexpr std::array<Directive, 2> NotationDirectives{{
    {".zilog", LineCategory::Directive,
     [](Assembly& run, Statement& s) { SwitchNotation(run, s, true); }},
    {".intel", LineCategory::Directive,
     [](Assembly& run, Statement& s) { SwitchNotation(run, s, false); }},
}};

// The macro, data, control and notation directives by word; where two
// tables held a word, the earlier one's row would stand.
class DirectiveTable {
  public:
    DirectiveTable() {
        for (const std::span<const Directive> rows :
             {std::span<const Directive>(MacroDirectives), DataDirectiveTable(),
              ControlDirectiveTable(), std::span<const Directive>(NotationDirectives)})
            for (const Directive& row : rows) pRows.emplace(row.Word, &row);
    }

    const Directive* Find(std::string_view word) const {
        const auto found = pRows.find(word);
        return found == pRows.end() ? nullptr : found->second;
    }

  private:
    std::unordered_map<std::string_view, const Directive*, TextHash, std::equal_to<>> pRows;
};

const Directive* FindDirective(std::string_view word) {
    static const DirectiveTable table;
    return table.Find(word);
}

} // namespace

WordKind ClassifyWord(std::string_view word, const OpcodeTable& opcodes, const MacroTable* macros) {
    const std::string keyword = LowerCase(word);
    if (keyword.empty()) return WordKind::Other;
    if (IsConditional(keyword) || FindSymbolDirective(keyword) || FindDirective(keyword))
        return WordKind::Directive;
    if (opcodes.RowOfKeyword(keyword) >= 0 || ZilogTranslator::IsZilogMnemonic(keyword))
        return WordKind::Instruction;
    if (macros && macros->Contains(keyword)) return WordKind::Macro;
    return WordKind::Other;
}

bool Assembly::Execute(Statement& s) {
    // Lines replayed from an expansion are listed only on request; their
    // diagnostics are listed all the same.
    if (!s.Where.Macro.empty() && !pState.Options.ListMacroExpansions) s.SuppressListing = true;
    // While a macro, rept, irp or irpc block is open every line is its body.
    if (pMacroBlocks.Collecting()) return pMacroBlocks.CollectBody(*this, s);
    const std::string_view word = s.Keyword;
    if (word.empty()) return false;
    // Conditionals keep their levels paired even while lines are skipped.
    if (IsConditional(word)) {
        ExecuteConditional(*this, s);
        return true;
    }
    if (pState.Skipping) return false;
    const Directive* directive = FindSymbolDirective(word);
    // `n set 1` names a value; `set 3,a`, with two operands, is the Z80 instruction.
    if (directive && IsRedefinition(word) && s.OperandCount() != 1) directive = nullptr;
    if (!directive) directive = FindDirective(word);
    if (directive) {
        s.Category = directive->Category;
        directive->Execute(*this, s);
        return true;
    }
    if (pState.ZilogNotation && ZilogTranslator::IsZilogMnemonic(word)) {
        pZilog.Encode(*this, s);
        return true;
    }
    if (InstructionHandler::EncodeInstruction(*this, s)) return true;
    if (pState.EraZ80Library && EraZ80Library::Encode(*this, s)) return true;
    return pMacroBlocks.Invoke(*this, s);
}

} // namespace trident
