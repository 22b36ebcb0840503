#pragma once

#include "assembler/StatementHandler.h"

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
    static void Encode(Assembly& run, Statement& statement);
    static void SeparateAlternateAfComment(Statement& statement);
};

} // namespace trident
