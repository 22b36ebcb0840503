#pragma once

#include "base/Text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace trident {

// Mnemonics and register names are a few characters long and looked up for
// every instruction of every pass: packed in one integer with their length,
// they compare as one number instead of character by character.
inline constexpr std::size_t PackedNameLength = 7;

// The first PackedNameLength characters of `name` in lower case, below its
// length (at most 255). Two names no longer than PackedNameLength are equal
// without regard to case exactly when their keys are; longer names with
// equal keys still have to be compared.
constexpr std::uint64_t NameKey(std::string_view name) {
    std::uint64_t key = std::min<std::size_t>(name.size(), 255);
    for (const char c : name.substr(0, PackedNameLength)) {
        const char folded = ToLowerAscii(c);
        key = key << 8 | static_cast<unsigned char>(folded);
    }
    return key;
}

// Spreads keys over a table of 2^bits slots (bits from 1 to 63).
constexpr std::size_t KeySlot(std::uint64_t key, unsigned bits) {
    return static_cast<std::size_t>(key * 0x9E3779B97F4A7C15u >> (64 - bits));
}

} // namespace trident
