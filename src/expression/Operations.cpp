#include "expression/Operations.h"

#include "expression/NumericValue.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <optional>

namespace trident::expr {

namespace {

// A numeric operation; nothing when the operation is undefined for the
// operands (division by zero, a result that is no finite number, a shift out
// of range).
using NumericFn = std::optional<Value> (*)(const Number& a, const Number& b);

struct Operation {
    int Code;
    NumericFn Apply;
    bool WholeOperands; // works on the operands truncated toward zero
};

struct Comparison {
    int Code;
    bool (*Holds)(int order);
};

// Beyond this shift count every double has overflowed or vanished.
constexpr double kMaxShift = 2100.0;

// 2 to the power 63: the first whole double outside the 64-bit range.
constexpr double kTwoPow63 = 9223372036854775808.0;

Value Truth(bool holds) {
    return static_cast<std::int32_t>(holds ? -1 : 0);
}

std::optional<Value> Real(const Number& a, const Number& b, double result) {
    if (!std::isfinite(result)) return std::nullopt;
    return MakeResult(a, b, result);
}

std::optional<std::int64_t> WholeOf(const Number& n) {
    if (n.IsInteger) return n.Int;
    const double whole = std::trunc(n.Real);
    if (!(whole > -kTwoPow63 - 1.0 && whole < kTwoPow63)) return std::nullopt;
    return static_cast<std::int64_t>(whole);
}

int ShiftCount(const Number& b) {
    return static_cast<int>(std::clamp(std::trunc(b.Real), -kMaxShift, kMaxShift));
}

template <typename Combine>
std::optional<Value> Bitwise(const Number& a, const Number& b, Combine combine) {
    const auto x = WholeOf(a);
    const auto y = WholeOf(b);
    if (!x || !y) return std::nullopt;
    return MakeInteger(combine(*x, *y));
}

std::optional<Value> Add(const Number& a, const Number& b) {
    if (a.IsInteger && b.IsInteger) return MakeInteger(a.Int + b.Int);
    return Real(a, b, a.Real + b.Real);
}

std::optional<Value> Subtract(const Number& a, const Number& b) {
    if (a.IsInteger && b.IsInteger) return MakeInteger(a.Int - b.Int);
    return Real(a, b, a.Real - b.Real);
}

std::optional<Value> Multiply(const Number& a, const Number& b) {
    if (a.IsInteger && b.IsInteger) return MakeInteger(a.Int * b.Int);
    return Real(a, b, a.Real * b.Real);
}

// Written with the backslash: the quotient with its fraction; an exact
// quotient of two integers stays an integer.
std::optional<Value> FractionalDivide(const Number& a, const Number& b) {
    if (b.Real == 0.0) return std::nullopt;
    return Real(a, b, a.Real / b.Real);
}

// Written "/" or "idiv": the quotient truncated toward zero.
std::optional<Value> IntegerDivide(const Number& a, const Number& b) {
    if (b.Real == 0.0) return std::nullopt;
    if (a.IsInteger && b.IsInteger) return MakeInteger(a.Int / b.Int);
    return Real(a, b, std::trunc(a.Real / b.Real));
}

std::optional<Value> Power(const Number& a, const Number& b) {
    return Real(a, b, std::pow(a.Real, b.Real));
}

// The remainder takes the sign of the dividend.
std::optional<Value> Remainder(const Number& a, const Number& b) {
    if (b.Real == 0.0) return std::nullopt;
    if (a.IsInteger && b.IsInteger) return MakeInteger(a.Int % b.Int);
    return Real(a, b, std::fmod(a.Real, b.Real));
}

std::optional<Value> ArithmeticShift(const Number& a, const Number& b, int count) {
    const double result = std::ldexp(a.Real, count);
    if (!std::isfinite(result) || !FitsSigned32(result)) return std::nullopt;
    return MakeResult(a, b, result);
}

std::optional<Value> ArithmeticShiftLeft(const Number& a, const Number& b) {
    return ArithmeticShift(a, b, ShiftCount(b));
}

std::optional<Value> ArithmeticShiftRight(const Number& a, const Number& b) {
    return ArithmeticShift(a, b, -ShiftCount(b));
}

std::optional<Value> LogicalShiftLeft(const Number& a, const Number& b) {
    return Real(a, b, std::trunc(std::ldexp(a.Real, ShiftCount(b))));
}

std::optional<Value> LogicalShiftRight(const Number& a, const Number& b) {
    return Real(a, b, std::trunc(std::ldexp(a.Real, -ShiftCount(b))));
}

std::optional<Value> BitwiseOr(const Number& a, const Number& b) {
    return Bitwise(a, b, std::bit_or<>{});
}

std::optional<Value> BitwiseAnd(const Number& a, const Number& b) {
    return Bitwise(a, b, std::bit_and<>{});
}

std::optional<Value> BitwiseXor(const Number& a, const Number& b) {
    return Bitwise(a, b, std::bit_xor<>{});
}

// Not a, or b.
std::optional<Value> Implication(const Number& a, const Number& b) {
    return Bitwise(a, b, [](std::int64_t x, std::int64_t y) { return ~x | y; });
}

// Not (a xor b).
std::optional<Value> Equivalence(const Number& a, const Number& b) {
    return Bitwise(a, b, [](std::int64_t x, std::int64_t y) { return ~(x ^ y); });
}

constexpr std::array kOperations{
    Operation{1, Add, false},
    Operation{2, Subtract, false},
    Operation{3, Multiply, false},
    Operation{4, FractionalDivide, false},
    Operation{5, IntegerDivide, false},
    Operation{6, Power, false},
    Operation{13, Remainder, false},
    Operation{14, BitwiseOr, true},
    Operation{15, BitwiseAnd, true},
    Operation{16, BitwiseXor, true},
    Operation{17, Implication, true},
    Operation{18, Equivalence, true},
    Operation{19, ArithmeticShiftLeft, false},
    Operation{20, ArithmeticShiftRight, false},
    Operation{21, LogicalShiftLeft, false},
    Operation{22, LogicalShiftRight, false},
};

// Comparisons hold or fail on the order of the operands (negative, zero or
// positive), so numbers and strings share them.
constexpr std::array kComparisons{
    Comparison{7, [](int order) { return order == 0; }},
    Comparison{8, [](int order) { return order != 0; }},
    Comparison{9, [](int order) { return order < 0; }},
    Comparison{10, [](int order) { return order > 0; }},
    Comparison{11, [](int order) { return order >= 0; }},
    Comparison{12, [](int order) { return order <= 0; }},
};

constexpr int kConcatenateCode = 1;
// The longest string a concatenation may make (its message names it).
constexpr std::size_t MaxStringLength = 65535;

template <typename Table> const auto* FindByCode(const Table& table, int code) {
    const auto* found = std::find_if(table.begin(), table.end(),
                                     [code](const auto& entry) { return entry.Code == code; });
    return found == table.end() ? nullptr : found;
}

int OrderOf(const Number& a, const Number& b) {
    if (a.Real < b.Real) return -1;
    return a.Real > b.Real ? 1 : 0;
}

void WarnIfFractional(const Number& n, ErrorList& errors) {
    if (!n.IsInteger && std::trunc(n.Real) != n.Real) {
        errors.AddError(EvalError::TruncatedToInteger, FormatValue(n.Real));
    }
}

// Strings concatenate with "+" and compare by their character codes;
// nothing else applies to them.
Value ApplyToStrings(const BinaryOperator& op, const Value& a, const Value& b, ErrorList& errors) {
    const auto* left = std::get_if<std::string>(&a);
    const auto* right = std::get_if<std::string>(&b);
    if (left != nullptr && right != nullptr) {
        if (op.Code == kConcatenateCode) {
            // A string doubled by set in a repeat would otherwise grow without end.
            if (left->size() + right->size() > MaxStringLength) {
                errors.AddError(EvalError::StringTooLong, op.Text);
                return {};
            }
            return *left + *right;
        }
        if (const auto* comparison = FindByCode(kComparisons, op.Code)) {
            return Truth(comparison->Holds(left->compare(*right)));
        }
    }
    errors.AddError(EvalError::InvalidOperand, op.Text);
    return {};
}

Value ApplyToNumbers(const BinaryOperator& op, const Number& a, const Number& b,
                     ErrorList& errors) {
    if (const auto* comparison = FindByCode(kComparisons, op.Code)) {
        return Truth(comparison->Holds(OrderOf(a, b)));
    }
    const Operation* operation = FindByCode(kOperations, op.Code);
    if (operation == nullptr) {
        errors.AddError(EvalError::ImplementationError, op.Text);
        return {};
    }
    if (operation->WholeOperands) {
        WarnIfFractional(a, errors);
        WarnIfFractional(b, errors);
    }
    auto result = operation->Apply(a, b);
    if (!result) {
        errors.AddError(EvalError::InvalidMathOperation, op.Text);
        return {};
    }
    return std::move(*result);
}

Value Complement(const Number& n, std::string_view text, ErrorList& errors) {
    WarnIfFractional(n, errors);
    const auto whole = WholeOf(n);
    if (!whole) {
        errors.AddError(EvalError::InvalidMathOperation, text);
        return {};
    }
    return MakeInteger(~*whole);
}

} // namespace

Value ApplyBinary(const BinaryOperator& op, const Value& a, const Value& b, ErrorList& errors) {
    if (op.Code == 0) {
        errors.AddError(EvalError::UnimplementedOperation, op.Text);
        return {};
    }
    if (IsEmpty(a) || IsEmpty(b)) return {};
    if (IsString(a) || IsString(b)) return ApplyToStrings(op, a, b, errors);
    return ApplyToNumbers(op, *ToNumber(a), *ToNumber(b), errors);
}

Value ApplyPrefix(const PrefixOperator& op, const Value& x, ErrorList& errors) {
    if (IsEmpty(x)) return {};
    const auto n = ToNumber(x);
    if (!n) {
        errors.AddError(EvalError::InvalidOperand, op.Text);
        return {};
    }
    switch (op.Op) {
    case PrefixOp::Identity:
        return x;
    case PrefixOp::Negate:
        return n->IsInteger ? MakeInteger(-n->Int) : Value(-n->Real);
    case PrefixOp::Complement:
        return Complement(*n, op.Text, errors);
    case PrefixOp::HighByte:
        return MakeWhole(ByteOf(n->Real, 1));
    case PrefixOp::LowByte:
        return MakeWhole(ByteOf(n->Real, 0));
    }
    return {};
}

} // namespace trident::expr
