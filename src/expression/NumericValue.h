#pragma once

#include "symbols/Value.h"

#include <cstdint>
#include <optional>
#include <string>

namespace trident::expr {

// A numeric operand as the operators see it. Integer operands (16 or 32 bit
// values) keep their exact value in Int; Real always holds the value as a
// double.
struct Number {
    bool IsInteger = false;
    std::int64_t Int = 0;
    double Real = 0.0;
};

// The operand of a numeric value; nothing for an empty or string value.
std::optional<Number> ToNumber(const Value& value);

// An integer result: a 32-bit integer while it fits, a double beyond.
Value MakeInteger(std::int64_t value);

// A whole-number result: a 32-bit integer when the double is integral and
// fits, the double itself otherwise.
Value MakeWhole(double value);

// The result of an arithmetic operation: integers stay integers only while
// both operands were integers and the result is whole.
Value MakeResult(const Number& a, const Number& b, double result);

// The text of a value for diagnostics: integers in decimal, doubles with up
// to 15 significant digits, strings as they are.
std::string FormatValue(const Value& value);

// Byte n (0 = lowest) of a value taken as an integer: the value is truncated
// toward zero, divided by 256 to the power n (truncated toward zero again)
// and the two's-complement low byte of the quotient is returned. Byte 0 is
// the value minus 256 times the floor of the value divided by 256, which is
// the same thing for whole numbers.
double ByteOf(double value, int n);

// True when the value is within the signed 32-bit range.
bool FitsSigned32(double value);

} // namespace trident::expr
