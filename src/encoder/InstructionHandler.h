#pragma once

#include "assembler/StatementMemo.h"

#include <cstdint>

namespace trident {

class InstructionEncoding;
struct OpcodeRow;

class Assembly;
struct Statement;

// Processor instructions: any operation word that names a row of the run's
// opcode table.
class InstructionHandler {
  public:
    // Encodes the statement as an instruction; false when its operation word
    // is empty or not in the opcode table.
    static bool EncodeInstruction(Assembly& run, Statement& statement);

  private:
    // The row of the statement's operation word (lower case: its keyword),
    // or -1.
    static std::int16_t FindRow(Assembly& run, const Statement& statement);
    static void MarkProcessor(Assembly& run, Statement& statement, const OpcodeRow& row);
    // Encodes while watching, and keeps what was emitted when the encoding
    // will be the same in every pass.
    static void EncodeAndKeep(Assembly& run, Statement& statement, InstructionEncoding& encoding,
                              KeptEncoding& kept);
    static void EmitAgain(Assembly& run, Statement& statement, const KeptEncoding& kept);
};

} // namespace trident
