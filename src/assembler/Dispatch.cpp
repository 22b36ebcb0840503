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
#include "source/LineScanner.h"

#include <algorithm>
#include <array>
#include <functional>
#include <initializer_list>
#include <span>
#include <unordered_map>

namespace trident {

// The macro, data, control and notation directives by word; where two
// tables held a word, the earlier one's row would stand. Compatible mode's
// table has its own rows first.
class DirectiveTable {
  public:
    DirectiveTable(Dialect rules, std::initializer_list<std::span<const Directive>> tables)
        : pRules(rules) {
        for (const std::span<const Directive> rows : tables)
            for (const Directive& row : rows) pRows.emplace(row.Word, &row);
    }

    const Directive* Find(std::string_view word) const {
        const auto found = pRows.find(word);
        return found == pRows.end() ? nullptr : found->second;
    }
    // Which dialect's rules the statements it serves are read by.
    Dialect Rules() const { return pRules; }

  private:
    Dialect pRules;
    std::unordered_map<std::string_view, const Directive*, TextHash, std::equal_to<>> pRows;
};

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

// Built once, before any assembly; read directly, with no guard to test
// for every statement.
const DirectiveTable StandardRows{Dialect::Standard,
                                  {std::span<const Directive>(MacroDirectives),
                                   DataDirectiveTable(), ControlDirectiveTable(),
                                   std::span<const Directive>(NotationDirectives)}};

const DirectiveTable CompatibleRows{
    Dialect::Compatible,
    {CompatibleDataDirectiveTable(), CompatibleControlDirectiveTable(),
     CompatibleSymbolDirectiveTable(), std::span<const Directive>(MacroDirectives),
     DataDirectiveTable(), ControlDirectiveTable(),
     std::span<const Directive>(NotationDirectives)}};

// The file of Intel's `$INCLUDE(:F1:NAME.SRC)`, without the drive; empty
// for any other control line.
std::string_view IncludedByControl(std::string_view line) {
    constexpr std::string_view Word = "$include(";
    if (line.size() <= Word.size() || LowerCase(line.substr(0, Word.size())) != Word) return {};
    std::string_view name = line.substr(Word.size());
    name = name.substr(0, name.find(')'));
    if (name.size() > 4 && name[0] == ':' && name[3] == ':') name.remove_prefix(4);
    return TrimBlanks(name);
}

bool TextHolds(const Statement& s, char c) {
    for (const std::string_view field : {s.Label, s.Operation, s.Operands, s.Comment})
        if (field.find(c) != std::string_view::npos) return true;
    return false;
}

} // namespace

WordKind ClassifyWord(std::string_view word, const OpcodeTable& opcodes, const MacroTable* macros) {
    const std::string keyword = LowerCase(word);
    if (keyword.empty()) return WordKind::Other;
    if (IsConditional(keyword) || FindSymbolDirective(keyword) || StandardRows.Find(keyword))
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
    // Compatible mode reads a statement by the rules of the era's assemblers;
    // default mode warns where they would read it otherwise.
    if (pState.Options.CompatibleMode) return ExecuteCompatibly(s);
    if (s.Marks != 0 && pListing.ListsLines()) WarnDialectSlips(s);
    return ExecuteStatement(s, StandardRows);
}

bool Assembly::ExecuteCompatibly(Statement& s) {
    if (ReadCompatibly(s)) return true;
    const bool executed = ExecuteStatement(s, CompatibleRows);
    if (!s.Where.Macro.empty()) HideExpansionLine(s);
    return executed;
}

// The rules every dialect shares, with its directive rows. Inline: the
// default mode's statements pay no further call.
inline bool Assembly::ExecuteStatement(Statement& s, const DirectiveTable& directives) {
    const std::string_view word = s.Keyword;
    if (word.empty()) return false;
    // Conditionals keep their levels paired even while lines are skipped.
    if (IsConditional(word)) {
        ExecuteConditional(*this, s, directives.Rules());
        return true;
    }
    if (pState.Skipping) return false;
    const Directive* directive = FindSymbolDirective(word);
    // `n set 1` names a value; `set 3,a`, with two operands, is the Z80 instruction.
    if (directive && IsRedefinition(word) && s.OperandCount() != 1) directive = nullptr;
    if (!directive) directive = directives.Find(word);
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

// Whether `word` (lower case) is an operation: a conditional, a directive or
// an instruction of the notation under way.
bool Assembly::IsOperationWord(std::string_view word, const DirectiveTable& directives) const {
    if (IsConditionalWord(word) || FindSymbolDirective(word) || directives.Find(word)) return true;
    if (pState.ZilogNotation) return ZilogTranslator::IsZilogMnemonic(word);
    return pOpcodes.HasKeyword(word);
}

// The rules of Compatible mode that come before the dispatch; true when
// they executed the statement.
bool Assembly::ReadCompatibly(Statement& s) {
    if (pState.CommentDelimiter != 0) {
        if (TextHolds(s, pState.CommentDelimiter)) pState.CommentDelimiter = 0;
        s.LabelTaken = true;
        return true;
    }
    // Control lines change nothing Trident lists, but for included files.
    if ((s.Marks & ControlLine) != 0) {
        if (const std::string_view name = IncludedByControl(s.Comment);
            !name.empty() && !pState.Skipping)
            IncludeFile(*this, name);
        return true;
    }
    if ((s.Marks & BareLabel) != 0 && LabelIsOperation(s, CompatibleRows))
        TakeLabelAsOperation(s, LowerCase(s.Label));
    if (pState.ZilogNotation && s.OperandCount() == 1 && (s.Keyword == "out" || s.Keyword == "in"))
        ExpandShortPortForm(s);
    // A macro named like an instruction or directive replaces it.
    return !pState.Skipping && !IsConditional(s.Keyword) && pMacroBlocks.Replaces(s.Keyword) &&
           pMacroBlocks.Invoke(*this, s);
}

// A word in column 1 without a colon is an operation (`ORG 100H`) when it
// names one and the word after it neither defines it (`page equ 60`) nor,
// but after a conditional (`IF Z80`), is an operation itself (`text db 'hi'`
// is a label named like a directive).
bool Assembly::LabelIsOperation(const Statement& s, const DirectiveTable& directives) const {
    if (LineScanner::IsDefiningWord(s.Keyword)) return false;
    const std::string word = LowerCase(s.Label);
    if (IsConditionalWord(word)) return true;
    if (!IsOperationWord(word, directives) && !pMacroBlocks.Defines(word)) return false;
    return s.Keyword.empty() ||
           !(IsOperationWord(s.Keyword, directives) || pMacroBlocks.Defines(s.Keyword));
}

// `ORG 100H` in column 1: the statement is cut again from its first word,
// as if indented.
void Assembly::TakeLabelAsOperation(Statement& s, std::string_view word) {
    const char* const begin = s.Label.data();
    const char* end = begin + s.Label.size();
    for (const std::string_view field : {s.Operation, s.Operands, s.Comment})
        if (!field.empty()) end = std::max(end, field.data() + field.size());
    SourceStatement fields;
    LineScanner::ScanIndentedStatement(
        std::string_view(begin, static_cast<std::size_t>(end - begin)), fields, pColumnOneOperands);
    pColumnOneWord = word;
    s.Label = {};
    s.Operation = fields.Operation;
    s.Keyword = pColumnOneWord;
    s.Operands = fields.Operands;
    s.Comment = fields.Comment;
    s.OperandList = pColumnOneOperands;
    // What was kept of the statement belongs to its first reading.
    s.Memo = nullptr;
}

// .sall lists no expansion lines, .xall only those that emitted code.
void Assembly::HideExpansionLine(Statement& s) {
    const ExpansionLines listed = pState.ListedExpansionLines;
    if (listed == ExpansionLines::None ||
        (listed == ExpansionLines::CodeOnly && s.BytesText.empty()))
        s.SuppressListing = true;
}

// Zilog notation's `out n` and `in n`: `out (n),a` and `in a,(n)`.
void Assembly::ExpandShortPortForm(Statement& s) {
    const std::string_view port = TrimBlanks(s.OperandList.front());
    // Appended, not "(" + text: GCC 12 at -O3 reports a false -Wrestrict there.
    pPortText =
        port.starts_with('(') ? std::string(port) : std::string("(").append(port).append(")");
    const bool out = s.Keyword == "out";
    pPortOperands = {out ? std::string_view(pPortText) : "a",
                     out ? "a" : std::string_view(pPortText)};
    s.OperandList = pPortOperands;
}

// Default mode: what the scanner saw that the era's dialects read
// otherwise, said on the listed pass.
void Assembly::WarnDialectSlips(Statement& s) {
    if ((s.Marks & FromComment) != 0)
        ListWarning("'!' in a ';' comment starts a statement: the rest of the comment was "
                    "assembled",
                    "");
    if ((s.Marks & EqualsAfterSeparator) != 0)
        ListWarning("'!' ends the statement; write <> for not-equal", "");
    if ((s.Marks & BareLabel) != 0 && LabelIsOperation(s, StandardRows))
        ListWarning("label looks like a directive; indent it, or use --compatible", s.Label);
}

} // namespace trident
