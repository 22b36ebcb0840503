#pragma once

#include <array>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

namespace trident {

inline constexpr char HexDigits[] = "0123456789ABCDEF";

// Upper-case hexadecimal with leading zeros, the form of every number in the
// listing and the object texts: at least `digits` digits, more when the value
// needs them. Written by hand because it runs for every emitted byte several
// times over.
template <std::output_iterator<char> Out> Out WriteHex(Out out, std::uint32_t value, int digits) {
    int width = digits;
    while (width < 8 && (value >> (4 * width)) != 0) ++width; // never cut a wider value
    for (int shift = 4 * (width - 1); shift >= 0; shift -= 4)
        *out++ = HexDigits[(value >> shift) & 0xF];
    return out;
}

inline void AppendHex(std::string& text, std::uint32_t value, int digits) {
    WriteHex(std::back_inserter(text), value, digits);
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
