#pragma once

#include "assembler/StatementHandler.h"

namespace trident {

// equ, the redefinable set / aset / defl / dl, and predef. A set form with
// other than one operand is left to the later steps: with two operands it is
// the Z80 bit instruction.
class SymbolDirectives : public StatementHandler {
  public:
    std::vector<std::string_view> OperationWords() const override;
    bool Handle(Assembly& run, Statement& statement) override;

  private:
    static void Equate(Assembly& run, Statement& statement);
    static void Redefine(Assembly& run, Statement& statement);
    static void LoadPredefinedGroups(Assembly& run, const Statement& statement);
};

} // namespace trident
