#include "expression/BuiltinFunctions.h"

#include "expression/CharTests.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <string>

namespace trident::expr {

namespace {

constexpr double kDegreesPerRadian = 180.0 / std::numbers::pi;

std::optional<Value> RealResult(double result) {
    if (!std::isfinite(result)) return std::nullopt;
    return Value(result);
}

// Rounding results are whole numbers: integers while they fit in 32 bits.
std::optional<Value> WholeResult(double result) {
    if (!std::isfinite(result)) return std::nullopt;
    return MakeWhole(result);
}

std::optional<Value> Reciprocal(double divisor) {
    if (divisor == 0.0) return std::nullopt;
    return RealResult(1.0 / divisor);
}

double Radians(const FunctionCall& call) {
    return call.Unit == AngleUnit::Degrees ? call.X.Real / kDegreesPerRadian : call.X.Real;
}

std::optional<Value> AngleResult(double radians, const FunctionCall& call) {
    return RealResult(call.Unit == AngleUnit::Degrees ? radians * kDegreesPerRadian : radians);
}

std::optional<Value> Sin(const FunctionCall& call) {
    return RealResult(std::sin(Radians(call)));
}
std::optional<Value> Cos(const FunctionCall& call) {
    return RealResult(std::cos(Radians(call)));
}
std::optional<Value> Tan(const FunctionCall& call) {
    return RealResult(std::tan(Radians(call)));
}
std::optional<Value> Sec(const FunctionCall& call) {
    return Reciprocal(std::cos(Radians(call)));
}
std::optional<Value> Cosec(const FunctionCall& call) {
    return Reciprocal(std::sin(Radians(call)));
}

std::optional<Value> Cotan(const FunctionCall& call) {
    const double sine = std::sin(Radians(call));
    if (sine == 0.0) return std::nullopt;
    return RealResult(std::cos(Radians(call)) / sine);
}

std::optional<Value> Atan(const FunctionCall& call) {
    return AngleResult(std::atan(call.X.Real), call);
}

std::optional<Value> Asin(const FunctionCall& call) {
    if (std::fabs(call.X.Real) > 1.0) return std::nullopt;
    return AngleResult(std::asin(call.X.Real), call);
}

std::optional<Value> Acos(const FunctionCall& call) {
    if (std::fabs(call.X.Real) > 1.0) return std::nullopt;
    return AngleResult(std::acos(call.X.Real), call);
}

std::optional<Value> SquareRoot(const FunctionCall& call) {
    if (call.X.Real < 0.0) return std::nullopt;
    return RealResult(std::sqrt(call.X.Real));
}

std::optional<Value> NaturalLog(const FunctionCall& call) {
    if (call.X.Real <= 0.0) return std::nullopt;
    return RealResult(std::log(call.X.Real));
}

std::optional<Value> Exp(const FunctionCall& call) {
    return RealResult(std::exp(call.X.Real));
}

std::optional<Value> Sign(const FunctionCall& call) {
    const double x = call.X.Real;
    return MakeInteger(x > 0.0 ? 1 : (x < 0.0 ? -1 : 0));
}

std::optional<Value> Abs(const FunctionCall& call) {
    if (call.X.IsInteger) return MakeInteger(std::llabs(call.X.Int));
    return RealResult(std::fabs(call.X.Real));
}

// The value reduced to an integer of the width: truncated toward zero, then
// wrapped around into the unsigned or two's-complement range. A warning
// names the original value when the result differs from it.
std::optional<Value> ConvertToWidth(const FunctionCall& call, int bits, bool isSigned,
                                    EvalError warning) {
    const double modulus = std::ldexp(1.0, bits);
    const double whole = std::trunc(call.X.Real);
    double result = whole - modulus * std::floor(whole / modulus);
    if (isSigned && result >= modulus / 2.0) result -= modulus;
    if (result != call.X.Real) {
        call.Errors.AddError(warning, call.X.IsInteger ? std::to_string(call.X.Int)
                                                       : FormatValue(call.X.Real));
    }
    return MakeWhole(result);
}

std::optional<Value> Floor(const FunctionCall& call) {
    return WholeResult(std::floor(call.X.Real));
}

std::optional<Value> Truncate(const FunctionCall& call) {
    return WholeResult(std::trunc(call.X.Real));
}

std::optional<Value> Ceil(const FunctionCall& call) {
    return WholeResult(std::ceil(call.X.Real));
}

std::optional<Value> DegreesToRadians(const FunctionCall& call) {
    return RealResult(call.X.Real / kDegreesPerRadian);
}

std::optional<Value> RadiansToDegrees(const FunctionCall& call) {
    return RealResult(call.X.Real * kDegreesPerRadian);
}

template <int Byte> std::optional<Value> SelectByte(const FunctionCall& call) {
    return WholeResult(ByteOf(call.X.Real, Byte));
}

template <int Bits, bool IsSigned, EvalError Warning>
std::optional<Value> Convert(const FunctionCall& call) {
    return ConvertToWidth(call, Bits, IsSigned, Warning);
}

constexpr std::array kFunctions{
    BuiltinFunction{"sin", Sin},
    BuiltinFunction{"cos", Cos},
    BuiltinFunction{"tan", Tan},
    BuiltinFunction{"sec", Sec},
    BuiltinFunction{"cosec", Cosec},
    BuiltinFunction{"cotan", Cotan},
    BuiltinFunction{"atan", Atan},
    BuiltinFunction{"asin", Asin},
    BuiltinFunction{"acos", Acos},
    BuiltinFunction{"sqr", SquareRoot},
    BuiltinFunction{"log", NaturalLog},
    BuiltinFunction{"exp", Exp},
    BuiltinFunction{"int", Floor},
    BuiltinFunction{"fix", Truncate},
    BuiltinFunction{"ceil", Ceil},
    BuiltinFunction{"floor", Floor},
    BuiltinFunction{"sgn", Sign},
    BuiltinFunction{"abs", Abs},
    BuiltinFunction{"deg2rad", DegreesToRadians},
    BuiltinFunction{"rad2deg", RadiansToDegrees},
    BuiltinFunction{"hhigh", SelectByte<3>},
    BuiltinFunction{"hlow", SelectByte<2>},
    BuiltinFunction{"high", SelectByte<1>},
    BuiltinFunction{"low", SelectByte<0>},
    BuiltinFunction{"u8", Convert<8, false, EvalError::ToUnsigned8>},
    BuiltinFunction{"u16", Convert<16, false, EvalError::ToUnsigned16>},
    BuiltinFunction{"u24", Convert<24, false, EvalError::ToUnsigned24>},
    BuiltinFunction{"u32", Convert<32, false, EvalError::ToUnsigned32>},
    BuiltinFunction{"s8", Convert<8, true, EvalError::ToSigned8>},
    BuiltinFunction{"s16", Convert<16, true, EvalError::ToSigned16>},
    BuiltinFunction{"s24", Convert<24, true, EvalError::ToSigned24>},
    BuiltinFunction{"s32", Convert<32, true, EvalError::ToSigned32>},
};

} // namespace

const BuiltinFunction* FindFunction(std::string_view name) {
    for (const auto& function : kFunctions) {
        if (EqualsNoCase(function.Name, name)) return &function;
    }
    return nullptr;
}

Value CallFunction(const BuiltinFunction& function, const Value& argument, AngleUnit unit,
                   ErrorList& errors) {
    if (IsEmpty(argument)) return {};
    const auto x = ToNumber(argument);
    if (!x) {
        errors.AddError(EvalError::InvalidOperand, function.Name);
        return {};
    }
    auto result = function.Apply(FunctionCall{*x, unit, errors});
    if (!result) {
        errors.AddError(EvalError::InvalidMathOperation, function.Name);
        return {};
    }
    return std::move(*result);
}

} // namespace trident::expr
