#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace trident {

// A hash for the short texts looked up on every statement (symbol names,
// operand texts). It takes the text eight bytes at a time, and a text
// shorter than that in at most two overlapping loads, where the library's
// string hash spends several dozen instructions before the first byte.
// Lookups may pass a string_view where the keys are strings.
//
// The call is deliberately not noexcept: the standard library then keeps
// each key's hash in its node, and a look-up compares those instead of
// hashing the keys it passes again.
struct TextHash {
    using is_transparent = void;

    std::size_t operator()(std::string_view text) const {
        const char* p = text.data();
        std::size_t n = text.size();
        std::uint64_t hash = n;
        if (n >= 8) {
            for (; n > 8; p += 8, n -= 8) hash = Mix(hash, Load<std::uint64_t>(p));
            // The last eight bytes, overlapping those taken already.
            hash = Mix(hash, Load<std::uint64_t>(p + n - 8));
        } else if (n >= 4) {
            hash = Mix(hash, std::uint64_t{Load<std::uint32_t>(p)} << 32 |
                                 Load<std::uint32_t>(p + n - 4));
        } else if (n > 0) {
            hash = Mix(hash, std::uint64_t{Byte(p[0])} << 16 | std::uint64_t{Byte(p[n / 2])} << 8 |
                                 Byte(p[n - 1]));
        }
        // Every bit of the result depends on every bit taken in: tables use
        // the low bits.
        hash ^= hash >> 33;
        hash *= 0xFF51AFD7ED558CCDull;
        hash ^= hash >> 33;
        return static_cast<std::size_t>(hash);
    }

  private:
    template <typename Word> static Word Load(const char* p) {
        Word word;
        std::memcpy(&word, p, sizeof word);
        return word;
    }
    static std::uint64_t Byte(char c) { return static_cast<unsigned char>(c); }
    static std::uint64_t Mix(std::uint64_t hash, std::uint64_t word) {
        hash = (hash ^ word) * 0x9E3779B97F4A7C15ull;
        return hash ^ (hash >> 32);
    }
};

} // namespace trident
