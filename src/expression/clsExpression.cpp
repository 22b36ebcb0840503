#include "expression/clsExpression.h"

#include "expression/CharTests.h"
#include "expression/NumberLiterals.h"
#include "expression/NumericValue.h"
#include "expression/OperatorTable.h"
#include "expression/clsExpressionParser.h"
#include "symbols/clsSymbolTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace trident {

namespace {

using expr::Number;

struct PrecisionMode {
    std::int16_t Level;
    // The number result converted; nothing keeps the result as it is.
    std::optional<Value> (*Convert)(const Number& n, clsErrorList& errors);
};

constexpr double kTwoPow32 = 4294967296.0;

std::optional<Value> TruncateToInteger(const Number& n, clsErrorList& errors) {
    const double whole = std::trunc(n.Real);
    if (n.IsInteger || whole == n.Real) return std::nullopt;
    errors.AddError(EvalError::TruncatedToInteger, expr::FormatValue(n.Real));
    return expr::MakeWhole(whole);
}

std::optional<Value> ForceToSigned32(const Number& n, clsErrorList& errors) {
    if (n.IsInteger) return std::nullopt;
    // Infinity and NaN wrap to no integer at all: they become 0.
    if (!std::isfinite(n.Real)) {
        errors.AddError(EvalError::ForcedToSigned32, expr::FormatValue(n.Real));
        return std::int32_t{0};
    }
    const double whole = std::trunc(n.Real);
    double wrapped = whole - kTwoPow32 * std::floor(whole / kTwoPow32);
    if (wrapped > std::numeric_limits<std::int32_t>::max()) wrapped -= kTwoPow32;
    if (wrapped != n.Real) errors.AddError(EvalError::ForcedToSigned32, expr::FormatValue(n.Real));
    return static_cast<std::int32_t>(wrapped);
}

std::optional<Value> MakeDouble(const Number& n, clsErrorList&) {
    return Value(n.Real);
}

std::optional<Value> KeepAsComputed(const Number&, clsErrorList&) {
    return std::nullopt;
}

constexpr std::array kPrecisionModes{
    PrecisionMode{0, KeepAsComputed},    PrecisionMode{1, KeepAsComputed},
    PrecisionMode{2, TruncateToInteger}, PrecisionMode{3, ForceToSigned32},
    PrecisionMode{4, MakeDouble},
};

constexpr std::int16_t kLevelOrder = 0;
constexpr std::int16_t kLeftToRightOrder = 1;

bool StartsNumber(std::string_view text) {
    if (expr::IsDecimalDigit(text.front())) return true;
    if (text.size() < 2 || text[0] != '&') return false;
    const char marker = expr::ToLowerAscii(text[1]);
    return marker == 'h' || marker == 'o';
}

// Most operands are one number or one name. Such a text holds no blank,
// parenthesis, quote or operator character and is not "nul": the parser
// would read it as a single operand token and nothing else.
std::optional<std::string_view> SingleOperand(std::string_view text) {
    text = expr::TrimBlanks(text);
    if (text.empty() || expr::EqualsNoCase(text, "nul")) return std::nullopt;
    for (const char c : text) {
        if (expr::IsBlank(c) || c == '(' || c == ')' || c == '"' || c == '\'' ||
            expr::IsOperatorChar(c))
            return std::nullopt;
    }
    return text;
}

} // namespace

Value clsExpression::Evaluate() {
    if (pPrecedence == kLevelOrder || pPrecedence == kLeftToRightOrder) {
        if (const auto word = SingleOperand(pExpression)) {
            pResult = ApplyPrecision(ResolveOperand(expr::Token{expr::TokenKind::Operand, *word}));
            return pResult;
        }
    }
    expr::ParserSettings settings{pAngleUnit, expr::OperatorOrder::Levels};
    if (pPrecedence == kLeftToRightOrder) {
        settings.Order = expr::OperatorOrder::LeftToRight;
    } else if (pPrecedence != kLevelOrder) {
        pErrors.AddError(EvalError::InvalidPrecedence, std::to_string(pPrecedence));
    }
    pResult = ApplyPrecision(pParser.Run(pExpression, settings));
    return pResult;
}

Value clsExpression::Evaluate(std::string_view text) {
    SetExpression(text);
    return Evaluate();
}

Value clsExpression::EvalNumber(std::string_view text) {
    return expr::EvalNumber(text, pErrors);
}

Value clsExpression::SingleQuoteStrToNumber(std::string_view text) {
    return expr::SingleQuoteStrToNumber(text, pErrors);
}

std::string clsExpression::DoubleQuotedStringToString(std::string_view text) {
    return expr::DoubleQuotedStringToString(text, pErrors);
}

// An operand is a number when it starts with a decimal digit or with "&h" or
// "&o" (so "0FFh" is a number and "FFh" a name), a character constant or a
// string when it starts with a quote, and a name otherwise.
Value clsExpression::ResolveOperand(const expr::Token& token) {
    const std::string_view text = token.Text;
    if (token.Kind == expr::TokenKind::Quoted) {
        if (text.front() == '"') return DoubleQuotedStringToString(text);
        return SingleQuoteStrToNumber(text);
    }
    if (StartsNumber(text)) return EvalNumber(text);
    return LookUpName(text);
}

// A name whose look-up gives no value, because it is unknown or not yet
// resolved, is reported; the empty result tells the caller to wait for a
// later pass.
Value clsExpression::LookUpName(std::string_view name) {
    if (pVariables == nullptr) {
        pErrors.AddError(EvalError::OperandDoesNotExist, name);
        return {};
    }
    if (pVariables->CaseSensitive() != pCaseSensitive) pVariables->SetCaseSensitive(pCaseSensitive);
    Value value = pVariables->Variable(name);
    if (IsEmpty(value)) pErrors.AddError(EvalError::NonExistentVariable, name);
    return value;
}

Value clsExpression::ApplyPrecision(const Value& value) {
    const auto* mode =
        std::find_if(kPrecisionModes.begin(), kPrecisionModes.end(),
                     [this](const PrecisionMode& m) { return m.Level == pPrecision; });
    if (mode == kPrecisionModes.end()) {
        pErrors.AddError(EvalError::InvalidPrecision, std::to_string(pPrecision));
        return value;
    }
    const auto number = expr::ToNumber(value);
    if (!number) return value;
    return mode->Convert(*number, pErrors).value_or(value);
}

} // namespace trident
