#pragma once

#include <cstdint>

namespace trident {

// Codes of the evaluator's error list. Negative codes are warnings about a
// value conversion, positive codes are errors, 0 means no error. The numbers
// are part of the list's text form and of the message table, so they never
// change.
enum class EvalError : std::int32_t {
    PowerOfCharacter = -13,
    NonStandardQuote = -12,
    ToSigned32 = -10,
    ToSigned24 = -9,
    ToSigned16 = -8,
    ToSigned8 = -7,
    ToUnsigned32 = -6,
    ToUnsigned24 = -5,
    ToUnsigned16 = -4,
    ToUnsigned8 = -3,
    TruncatedToInteger = -2,
    None = 0,
    OperandDoesNotExist = 3,
    InvalidOperator = 4,
    InvalidOperand = 5,
    InvalidNumber = 6,
    MissingOperator = 7,
    MissingOperand = 8,
    MissingOpenParenthesis = 9,
    MissingCloseParenthesis = 10,
    InvalidMathOperation = 11,
    UnimplementedOperation = 12,
    UnimplementedFunction = 13,
    MismatchedParenthesis = 14,
    InvalidHexNumber = 15,
    InvalidHexDigit = 16,
    InvalidDecimalDigit = 17,
    InvalidOctalDigit = 18,
    InvalidBinaryDigit = 19,
    InvalidOctalEscape = 20,
    InvalidEscape = 21,
    MustStartWithDigit = 22,
    InvalidSingleQuotes = 23,
    InvalidDoubleQuotes = 24,
    MismatchedQuotes = 25,
    NonExistentVariable = 26,
    UnableToAddVariable = 27,
    StringTooLong = 28,
    ImplementationError = 30,
};

} // namespace trident
