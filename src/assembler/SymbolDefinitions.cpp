// Giving names their values: labels and equ names once, set names at will.
#include "assembler/Assembly.h"
#include "base/Text.h"
#include "source/RunFailure.h"
#include "source/StatementMemo.h"

#include <limits>

namespace trident {
namespace {

bool IsRedefinableLocal(std::string_view name) {
    return name.substr(0, 2) == "..";
}

// Numbers compare by value, whatever width they are held in.
bool SameValue(const Value& a, const Value& b) {
    const std::optional<double> x = AsNumber(a);
    const std::optional<double> y = AsNumber(b);
    return x && y ? *x == *y : a == b;
}

} // namespace

void Assembly::DefineSymbol(std::string_view name, const Value& value, std::string_view kind) {
    if (name.empty()) {
        ListError("Attempt to define NULL symbol name", "");
        return;
    }
    SymbolTable& symbols = *pSymbols;
    // The label of a kept statement remembers its slot.
    SymbolSlot* const found = pStatement.Memo && name.data() == pStatement.Label.data() &&
                                      name.size() == pStatement.Label.size()
                                  ? &pStatement.Memo->Label()
                                  : nullptr;
    if (const int slot = found ? symbols.SlotOf(name, *found) : symbols.SlotOf(name); slot >= 0) {
        if (IsRedefinableLocal(name)) {
            symbols.SetVariable(name, value);
            symbols.SetPass(slot, pState.CurrentPass);
            RecordDefinition(slot, kind);
        } else if (pState.CurrentPass == 0) {
            // The final pass meets every definition once more: the first one
            // claims the name for this pass, a second one is the duplicate
            // (in Compatible mode only when its value differs).
            if (symbols.Pass(slot) != 0) {
                symbols.SetPass(slot, 0);
                RecordDefinition(slot, kind);
            } else if (!pState.Options.CompatibleMode || !SameValue(symbols.SymVal(slot), value)) {
                ListError("Symbol Already Defined", name);
            }
        } else if (pState.Options.CompatibleMode) {
            MoveSymbol(slot, value);
        }
        // Otherwise, in a resolving pass, an existing label keeps the value
        // it was created with.
        return;
    }
    if (IsEmpty(value)) return;
    const int slot =
        found ? symbols.SetVariable(name, value, *found) : symbols.SetVariable(name, value);
    if (slot < 0)
        throw RunFailure("symbol table full: more than " + std::to_string(SymbolTable::SlotCount) +
                         " symbols");
    symbols.SetPass(slot, pState.CurrentPass);
    RecordDefinition(slot, kind);
    pState.AnotherPassNeeded = true;
}

// Names defined from outside the source (the command line, the window's
// Defines field) come before its first statement in every pass, as if by
// equ: the source defining one again is a duplicate like any other.
void Assembly::DefineGivenNames() {
    if (pState.Options.Defines.empty()) return;
    pStatement.Where = SourcePosition{};
    for (const std::string& define : pState.Options.Defines) {
        const std::string_view text = define;
        const std::size_t equals = text.find('=');
        const std::string_view name = TrimBlanks(text.substr(0, equals));
        const Value value = equals == std::string_view::npos ? Value{std::int32_t{1}}
                                                             : Evaluate(text.substr(equals + 1));
        DefineSymbol(name, value, "define");
    }
    // The first statement takes its file and macro names afresh.
    pStatementNamesVersion = std::numeric_limits<std::uint64_t>::max();
}

// Compatible mode lets a condition decided in a later pass move the code
// after it: the first definition of a pass gives the name its value of this
// pass, and another pass follows when that changed it.
void Assembly::MoveSymbol(int slot, const Value& value) {
    SymbolTable& symbols = *pSymbols;
    if (symbols.Pass(slot) == pState.CurrentPass || IsEmpty(value)) return;
    symbols.SetPass(slot, pState.CurrentPass);
    if (SameValue(symbols.SymVal(slot), value)) return;
    symbols.SetVariable(symbols.Mnemonic(slot), value);
    pState.AnotherPassNeeded = true;
}

void Assembly::RedefineSymbol(std::string_view name, const Value& value) {
    if (IsEmpty(value)) return;
    SymbolTable& symbols = *pSymbols;
    const int slot = symbols.SetVariable(name, value);
    if (slot < 0)
        throw RunFailure("symbol table full: more than " + std::to_string(SymbolTable::SlotCount) +
                         " symbols");
    symbols.SetPass(slot, pState.CurrentPass);
    RecordDefinition(slot, "set");
}

} // namespace trident
