#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace trident {

// The value the assemblers of the 8080 era give a register name (b=0 ... a=7,
// sp and psw 6) or an 8080 mnemonic (its opcode, as the predefined mnemonic
// group has it) written as a value, whatever its case; nothing for any other
// name.
std::optional<std::int16_t> EraNameValue(std::string_view name);

} // namespace trident
