#pragma once

#include "source/StatementMemo.h"

#include <cstdint>

namespace trident {

class InstructionEncoding;
struct OpcodeRow;

class EncoderContext;
struct Statement;

// Processor instructions: any operation word that names a row of the run's
// opcode table.
class InstructionHandler {
  public:
    // Encodes the statement as an instruction; false when its operation word
    // is empty or not in the opcode table.
    static bool EncodeInstruction(EncoderContext& run, Statement& statement);

  private:
    // The row of the statement's operation word (lower case: its keyword),
    // or -1.
    static std::int16_t FindRow(EncoderContext& run, const Statement& statement);
    static void MarkProcessor(EncoderContext& run, Statement& statement, const OpcodeRow& row);
    static void WarnProcessor(EncoderContext& run, const Statement& statement);
    // Encodes while watching, and keeps what was emitted when the encoding
    // will be the same in every pass.
    static void EncodeAndKeep(EncoderContext& run, Statement& statement,
                              InstructionEncoding& encoding, KeptEncoding& kept);
    static void EmitAgain(EncoderContext& run, Statement& statement, const KeptEncoding& kept);
};

} // namespace trident
