#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace trident::expr {

// The operator rules an assembly reads its expressions with, chosen at the
// start of every pass. Compatible adds what the era's cross-assemblers accept: "^"
// is exclusive or instead of the power, "~" the complement (and so no longer
// a name character).
enum class Dialect : std::uint8_t { Standard, Compatible };

// One binary operator: its text as written (symbol or word), its precedence
// level (6 binds tightest) and its operator code. Code 0 marks an operator
// that is recognised but has no operation.
struct BinaryOperator {
    std::string_view Text;
    int Level;
    int Code;
};

// The operators that may stand before an operand.
enum class PrefixOp { Identity, Negate, Complement, HighByte, LowByte };

struct PrefixOperator {
    std::string_view Text;
    PrefixOp Op;
};

constexpr int kLowestLevel = 1;
constexpr int kHighestLevel = 6;

// The binary operator written as text (words case-blind); nothing when the
// text is no operator.
const BinaryOperator* FindBinaryOperator(std::string_view text,
                                         Dialect dialect = Dialect::Standard);

// The symbol operator at the start of text, the longest first ("<>" before
// "<"); nothing when text starts with no symbol operator.
std::optional<std::string_view> MatchSymbolOperator(std::string_view text,
                                                    Dialect dialect = Dialect::Standard);

// True when the text is an operator of the level; false for any level
// outside 1 to 6.
bool IsOperatorOfLevel(std::string_view op, int level);

// The operator code of the text, 0 for anything that has none.
int OperatorCode(std::string_view op);

// The prefix operator written as text (words case-blind), or nothing.
const PrefixOperator* FindPrefixOperator(std::string_view text,
                                         Dialect dialect = Dialect::Standard);

// For each character, whether symbol operators are made from it.
using OperatorChars = std::array<bool, 256>;
const OperatorChars& OperatorCharsOf(Dialect dialect);

// True for the characters from which symbol operators are made.
inline bool IsOperatorChar(char c, Dialect dialect = Dialect::Standard) {
    return OperatorCharsOf(dialect)[static_cast<unsigned char>(c)];
}

// True for the power operator of the standard dialect, which sources written
// for other assemblers mean as exclusive or.
bool IsPower(const BinaryOperator& op);

} // namespace trident::expr
