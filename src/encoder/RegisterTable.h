#pragma once

#include "encoder/RegisterEntry.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace trident {

// The fixed register names of the operands: the 8080 registers and pairs,
// the index registers (ix, iy and their short names x, y) and the indexed
// memory forms (ix), (iy), (x), (y).
class RegisterTable {
  public:
    static constexpr std::int16_t Bound = 21;
    static constexpr std::uint8_t IxPrefix = 0xDD;
    static constexpr std::uint8_t IyPrefix = 0xFD;

    // No register name is longer.
    static constexpr std::size_t LongestName = 4;

    static std::span<const RegisterEntry> Entries();
    // The entry named `name` without regard to case, or nullptr.
    static const RegisterEntry* Find(std::string_view name);
};

} // namespace trident
