#pragma once

#include <cstdint>

namespace trident {

class SymbolTable;

// Where a name was found in a symbol table, remembered by whoever looks the
// same name up again and again (the operands and labels of a statement in
// every pass): it holds for as long as no slot of that table changes place
// or name, and the table checks that before it trusts it.
class SymbolSlot {
  private:
    friend class SymbolTable;

    const SymbolTable* pTable = nullptr; // the table that pSlot is in
    std::uint64_t pLayout = 0;           // that table's layout when it was found
    int pSlot = -1;
};

} // namespace trident
