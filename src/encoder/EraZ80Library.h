#pragma once

#include "source/Statement.h"

namespace trident {

class EncoderContext;

// The extended Z80 mnemonics of the era's Z80 macro library for sources in
// 8080 notation (ldx, stx, mvix, bitx, pushix, outpf, ...), in the library's
// operand order and with its ranges. Compatible mode supplies them when a
// source asks for that library and no file of that name is found; its
// relative jumps are the opcode table's, with "$" read as the library reads
// it (InstructionEncoding::Disp).
class EraZ80Library {
  public:
    // True when `name` (with or without its extension) names that library.
    static bool IsLibraryName(std::string_view name);
    // Encodes the statement when its word is one of the library's; false
    // otherwise.
    static bool Encode(EncoderContext& run, Statement& statement);
};

} // namespace trident
