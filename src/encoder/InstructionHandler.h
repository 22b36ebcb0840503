#pragma once

#include "assembler/StatementHandler.h"

namespace trident {

struct OpcodeRow;

// The statement step for processor instructions: any operation word that
// names a row of the run's opcode table.
class InstructionHandler : public StatementHandler {
  public:
    bool Handle(Assembly& run, Statement& statement) override {
        return EncodeInstruction(run, statement);
    }

    // Encodes the statement as an instruction; false when its operation word
    // is empty or not in the opcode table.
    static bool EncodeInstruction(Assembly& run, Statement& statement);

  private:
    static void MarkProcessor(Assembly& run, Statement& statement, const OpcodeRow& row);
};

} // namespace trident
