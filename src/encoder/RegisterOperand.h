#pragma once

#include <cstdint>
#include <optional>

namespace trident {

// An operand read as a register: its code, the index prefix of the IX / IY
// forms, and the displacement written before an indexed memory form.
struct RegisterOperand {
    // 0 when the operand named no register.
    std::uint8_t Code = 0;
    std::optional<std::uint8_t> IndexPrefix;
    std::int32_t Displacement = 0;
};

} // namespace trident
