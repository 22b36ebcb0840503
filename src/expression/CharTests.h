#pragma once

#include "base/Text.h"

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

} // namespace trident::expr
