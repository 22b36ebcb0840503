// Giving names their values: labels and equ names once, set names at will.
#include "assembler/Assembly.h"
#include "source/RunFailure.h"
#include "source/StatementMemo.h"

namespace trident {
namespace {

bool IsRedefinableLocal(std::string_view name) {
    return name.substr(0, 2) == "..";
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
            // claims the name for this pass, a second one is the duplicate.
            if (symbols.Pass(slot) == 0)
                ListError("Symbol Already Defined", name);
            else {
                symbols.SetPass(slot, 0);
                RecordDefinition(slot, kind);
            }
        }
        // In a resolving pass an existing label keeps the value it was
        // created with.
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
