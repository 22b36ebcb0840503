#include "expression/QuotedText.h"

#include "expression/CharTests.h"

#include <array>
#include <optional>

namespace trident::expr {

namespace {

struct NamedEscape {
    char Letter;
    char Code;
};

constexpr std::array kNamedEscapes{
    NamedEscape{'t', 9}, NamedEscape{'n', 10}, NamedEscape{'r', 13}, NamedEscape{'a', 7},
    NamedEscape{'b', 8}, NamedEscape{'f', 12}, NamedEscape{'v', 11},
};

constexpr std::size_t kMaxOctalDigits = 3;

char EscapedChar(char letter) {
    for (const auto& escape : kNamedEscapes) {
        if (escape.Letter == letter) return escape.Code;
    }
    return letter; // backslash, quotes and anything else stand for themselves
}

// Decodes the escape whose first character (after the backslash) is at pos;
// returns the position after it, or nothing on an octal value above 255.
std::optional<std::size_t> DecodeEscape(std::string_view body, std::size_t pos, std::string& out) {
    if (!IsOctalDigit(body[pos])) {
        out += EscapedChar(body[pos]);
        return pos + 1;
    }
    int value = 0;
    std::size_t end = pos;
    while (end < body.size() && end - pos < kMaxOctalDigits && IsOctalDigit(body[end])) {
        value = value * 8 + (body[end] - '0');
        if (value > 255) return std::nullopt;
        ++end;
    }
    out += static_cast<char>(value);
    return end;
}

} // namespace

DecodedText DecodeQuotedBody(std::string_view body, char quote) {
    DecodedText result;
    std::size_t pos = 0;
    while (pos < body.size()) {
        const char c = body[pos];
        if (c == '\\') {
            if (pos + 1 >= body.size())
                return {std::move(result.Bytes), QuoteFault::TrailingEscape};
            const auto next = DecodeEscape(body, pos + 1, result.Bytes);
            if (!next) return {std::move(result.Bytes), QuoteFault::OctalOverflow};
            pos = *next;
        } else if (c == quote) {
            if (pos + 1 >= body.size()) break; // lone quote before the closing one
            if (body[pos + 1] != quote) return {std::move(result.Bytes), QuoteFault::LoneQuote};
            result.Bytes += quote;
            pos += 2;
        } else {
            result.Bytes += c;
            ++pos;
        }
    }
    return result;
}

} // namespace trident::expr
