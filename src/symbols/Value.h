#pragma once

#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace trident {

// The one value type shared by the evaluator, the symbol table and the
// directives. An empty value means "not resolved in this pass": callers emit
// placeholders or skip, and a later pass supplies the real value.
using Value = std::variant<std::monostate, std::int16_t, std::int32_t, double, std::string>;

inline bool IsEmpty(const Value& value) {
    return std::holds_alternative<std::monostate>(value);
}

inline bool IsString(const Value& value) {
    return std::holds_alternative<std::string>(value);
}

// The numeric value as a double; nothing for an empty or string value.
inline std::optional<double> AsNumber(const Value& value) {
    if (const auto* i16 = std::get_if<std::int16_t>(&value)) return *i16;
    if (const auto* i32 = std::get_if<std::int32_t>(&value)) return *i32;
    if (const auto* d = std::get_if<double>(&value)) return *d;
    return std::nullopt;
}

// The low 32 bits (two's complement) of a number's whole part, taken
// exactly for every double however large; 0 for an infinity or NaN.
inline std::uint32_t WholeBits(double number) {
    if (!std::isfinite(number)) return 0;
    const double whole = std::trunc(number);
    if (std::fabs(whole) < 9.0e18)
        return static_cast<std::uint32_t>(static_cast<std::int64_t>(whole));
    constexpr double twoPow32 = 4294967296.0;
    double low = std::fmod(whole, twoPow32);
    if (low < 0) low += twoPow32;
    return static_cast<std::uint32_t>(low);
}

// The same of a value, as emitted code takes it; 0 for an empty value or a
// string.
inline std::uint32_t WholeBits(const Value& value) {
    if (const auto* i32 = std::get_if<std::int32_t>(&value))
        return static_cast<std::uint32_t>(*i32);
    const std::optional<double> number = AsNumber(value);
    return number ? WholeBits(*number) : 0;
}

} // namespace trident
