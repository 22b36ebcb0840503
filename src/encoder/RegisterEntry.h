#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace trident {

// What a register name may stand for.
enum class RegisterWidthClass : std::int16_t {
    Byte = 1,       // an 8-bit register or memory through a register
    Pair = 2,       // a 16-bit register or pair
    ByteOrPair = 3, // b, d, h: the register, or in 8080 notation its pair
};

// One register name the operands may use.
struct RegisterEntry {
    std::string_view Name;
    // Pairs carry the number of their high register (0, 2, 4, 6), so that
    // the same shift places both in the opcode.
    std::uint8_t Code = 0;
    // DD for the IX forms, FD for the IY forms.
    std::optional<std::uint8_t> IndexPrefix;
    RegisterWidthClass Width = RegisterWidthClass::Byte;
};

} // namespace trident
