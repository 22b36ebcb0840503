#pragma once

#include <string>
#include <string_view>

namespace trident::expr {

// Character classes of the expression language. The text is taken byte by
// byte in the single-byte code page; only ASCII letters count as letters.

// A character that may start or continue a name.
constexpr bool IsSymbolChar(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == '~' || c == '@' ||
           c == '?';
}

constexpr bool IsBinaryDigit(char c) {
    return c == '0' || c == '1';
}
constexpr bool IsOctalDigit(char c) {
    return c >= '0' && c <= '7';
}
constexpr bool IsDecimalDigit(char c) {
    return c >= '0' && c <= '9';
}
// Lower-case letters only: callers fold the case of a digit before asking.
constexpr bool IsHexDigit(char c) {
    return IsDecimalDigit(c) || (c >= 'a' && c <= 'f');
}

constexpr bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

constexpr char ToLowerAscii(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c + 32) : c;
}

inline std::string ToLowerAscii(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = ToLowerAscii(c);
    return lower;
}

// Case-blind comparison of two texts, ASCII letters only.
constexpr bool EqualsNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (ToLowerAscii(a[i]) != ToLowerAscii(b[i])) return false;
    }
    return true;
}

// Text without every character that occurs in set.
inline std::string StripChars(std::string_view text, std::string_view set) {
    std::string kept;
    kept.reserve(text.size());
    for (char c : text) {
        if (set.find(c) == std::string_view::npos) kept += c;
    }
    return kept;
}

// Text without leading and trailing blanks and tabs.
constexpr std::string_view TrimBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

} // namespace trident::expr
