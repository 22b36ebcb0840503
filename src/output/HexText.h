#pragma once

#include <cstdint>
#include <string>

namespace trident {

// Upper-case hexadecimal with leading zeros, the form of every number in the
// listing and the object texts. Written by hand because it runs for every
// emitted byte several times over.
inline void AppendHex(std::string& text, std::uint32_t value, int digits) {
    static constexpr char Digits[] = "0123456789ABCDEF";
    int width = digits;
    while (width < 8 && (value >> (4 * width)) != 0) ++width; // never cut a wider value
    for (int shift = 4 * (width - 1); shift >= 0; shift -= 4)
        text += Digits[(value >> shift) & 0xF];
}

inline std::string HexText(std::uint32_t value, int digits) {
    std::string text;
    AppendHex(text, value, digits);
    return text;
}

} // namespace trident
