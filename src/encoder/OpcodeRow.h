#pragma once

#include "encoder/OperandClass.h"
#include "symbols/Value.h"

#include <cstdint>
#include <optional>
#include <string>

namespace trident {

// The processor of a row, read from its cpu field without regard to case.
enum class RowCpu : std::uint8_t { Other, I8080, Z80, Z180 };

// One row of the opcode table: a mnemonic and how to encode it.
struct OpcodeRow {
    // As written in the table; looked up without regard to case.
    std::string Mnemonic;
    // The base opcode; register, pair and number fields are ORed into it.
    std::uint8_t Opcode = 0;
    // Kept but not consulted by the encoder; the shipped table holds the
    // instruction's length without index prefix and displacement.
    std::int16_t Spare = 0;
    OperandClass Class = OperandClass::None;
    // A number or a word (NO by convention). Only a 16-bit integer is a
    // prefix byte; a word or a larger number means "no prefix of its own".
    Value Prefix;
    // "8080", "z80" or "z180".
    std::string Cpu;
    // Cpu read once when the row is loaded, for the checks made on every
    // instruction.
    RowCpu Family = RowCpu::Other;
    // Cpu spelt exactly "z80" or "z180": only such a row marks its processor
    // as used when it is looked up.
    bool MarksUse = false;

    std::optional<std::uint8_t> PrefixByte() const {
        if (const auto* prefix = std::get_if<std::int16_t>(&Prefix))
            return static_cast<std::uint8_t>(*prefix & 0xFF);
        return std::nullopt;
    }
};

} // namespace trident
