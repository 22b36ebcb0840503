#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace trident {

inline constexpr char HexDigits[] = "0123456789ABCDEF";

// Upper-case hexadecimal with leading zeros is the form of every number in
// the listing and the object texts. Written by hand because it runs for
// every emitted byte several times over.

// How many digits WriteHex writes: at least `digits`, more when the value
// needs them (a wider value is never cut).
constexpr int HexWidth(std::uint32_t value, int digits) {
    return std::max(digits, (static_cast<int>(std::bit_width(value)) + 3) / 4);
}

// The two digits of every byte value, looked up rather than computed.
inline constexpr auto HexPairs = [] {
    std::array<std::array<char, 2>, 256> pairs{};
    for (std::size_t byte = 0; byte < pairs.size(); ++byte)
        pairs[byte] = {HexDigits[byte >> 4], HexDigits[byte & 0xF]};
    return pairs;
}();

inline char* WriteHexByte(char* out, std::uint8_t byte) {
    std::memcpy(out, HexPairs[byte].data(), 2);
    return out + 2;
}

// Exactly `width` digits of the value into `out`, the lowest last.
inline char* WriteHexDigits(char* out, std::uint32_t value, int width) {
    if (width == 4) { // an address or a word: most numbers written
        WriteHexByte(out, static_cast<std::uint8_t>(value >> 8 & 0xFF));
        return WriteHexByte(out + 2, static_cast<std::uint8_t>(value & 0xFF));
    }
    char* const end = out + width;
    char* at = end;
    for (; at - out >= 2; value >>= 8) {
        at -= 2;
        WriteHexByte(at, static_cast<std::uint8_t>(value & 0xFF));
    }
    if (at != out) *--at = HexDigits[value & 0xF];
    return end;
}

inline char* WriteHex(char* out, std::uint32_t value, int digits) {
    return WriteHexDigits(out, value, HexWidth(value, digits));
}

inline void AppendHex(std::string& text, std::uint32_t value, int digits) {
    char room[8];
    text.append(room, static_cast<std::size_t>(WriteHex(room, value, digits) - room));
}

// The two digits of a byte: the listing text of every emitted byte.
inline void AppendHexByte(std::string& text, std::uint8_t byte) {
    text.push_back(HexPairs[byte][0]);
    text.push_back(HexPairs[byte][1]);
}

// The low `Width` digits of a value, held in place: a field of a record
// composed without a string.
template <int Width> class FixedHex {
  public:
    explicit FixedHex(std::uint32_t value) {
        for (int i = Width - 1; i >= 0; --i, value >>= 4) pDigits[i] = HexDigits[value & 0xF];
    }
    operator std::string_view() const { return {pDigits.data(), pDigits.size()}; }

  private:
    std::array<char, Width> pDigits;
};

} // namespace trident
