#include "expression/NumericValue.h"

#include <cmath>
#include <cstdio>
#include <limits>

namespace trident::expr {

namespace {

constexpr double kMinSigned32 = std::numeric_limits<std::int32_t>::min();
constexpr double kMaxSigned32 = std::numeric_limits<std::int32_t>::max();

} // namespace

std::optional<Number> ToNumber(const Value& value) {
    if (const auto* i16 = std::get_if<std::int16_t>(&value))
        return Number{true, *i16, static_cast<double>(*i16)};
    if (const auto* i32 = std::get_if<std::int32_t>(&value))
        return Number{true, *i32, static_cast<double>(*i32)};
    if (const auto* d = std::get_if<double>(&value)) return Number{false, 0, *d};
    return std::nullopt;
}

Value MakeInteger(std::int64_t value) {
    if (value >= std::numeric_limits<std::int32_t>::min() &&
        value <= std::numeric_limits<std::int32_t>::max()) {
        return static_cast<std::int32_t>(value);
    }
    return static_cast<double>(value);
}

bool FitsSigned32(double value) {
    return value >= kMinSigned32 && value <= kMaxSigned32;
}

Value MakeWhole(double value) {
    if (std::trunc(value) == value && FitsSigned32(value)) return static_cast<std::int32_t>(value);
    return value;
}

Value MakeResult(const Number& a, const Number& b, double result) {
    if (a.IsInteger && b.IsInteger) return MakeWhole(result);
    return result;
}

std::string FormatValue(const Value& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* d = std::get_if<double>(&value)) {
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, "%.15g", *d);
        return buffer;
    }
    if (const auto number = ToNumber(value)) return std::to_string(number->Int);
    return {};
}

double ByteOf(double value, int n) {
    const double quotient = std::trunc(std::ldexp(std::trunc(value), -8 * n));
    return quotient - 256.0 * std::floor(quotient / 256.0);
}

} // namespace trident::expr
