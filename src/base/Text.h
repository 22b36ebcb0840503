#pragma once

#include <string>
#include <string_view>

namespace trident {

// Text rules every subsystem shares. Source text is taken byte by byte in
// the single-byte code page: only ASCII letters have a case.

constexpr bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

constexpr bool IsUpperAscii(char c) {
    return c >= 'A' && c <= 'Z';
}

constexpr char ToLowerAscii(char c) {
    return IsUpperAscii(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

inline void LowerCaseInPlace(std::string& text) {
    for (char& c : text) c = ToLowerAscii(c);
}

inline std::string LowerCase(std::string_view text) {
    std::string lower(text);
    LowerCaseInPlace(lower);
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

} // namespace trident
