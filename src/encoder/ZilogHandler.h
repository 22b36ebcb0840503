#pragma once

#include "assembler/StatementHandler.h"

#include <string_view>
#include <vector>

namespace trident {

// The statement step of the Zilog notation: the .zilog and .intel
// directives that switch it, and, while it is on, every statement whose
// operation word is a Zilog mnemonic, encoded as its 8080-style equivalent.
// Other operation words go on to the later steps in either notation.
class ZilogHandler : public StatementHandler {
  public:
    void StartPass(Assembly& run) override;
    bool Handle(Assembly& run, Statement& statement) override;

  private:
    static bool SwitchNotation(Assembly& run, Statement& statement);
    void Encode(Assembly& run, Statement& statement);
    void SeparateAlternateAfComment(Statement& statement);

    // The operands of the statement under way when they differ from those
    // its line was cut into.
    std::vector<std::string_view> pOperands;
};

} // namespace trident
