#include "expression/OperatorTable.h"

#include "expression/CharTests.h"

#include <array>

namespace trident::expr {

namespace {

constexpr std::array kBinaryOperators{
    BinaryOperator{"^", 6, 6},
    BinaryOperator{"*", 5, 3},
    BinaryOperator{"/", 5, 5},
    BinaryOperator{"idiv", 5, 5},
    BinaryOperator{"\\", 5, 4},
    BinaryOperator{"%", 5, 13},
    BinaryOperator{"mod", 5, 13},
    BinaryOperator{"asl", 5, 19},
    BinaryOperator{"asr", 5, 20},
    BinaryOperator{"lsl", 5, 21},
    BinaryOperator{"shl", 5, 21},
    BinaryOperator{"<<", 5, 21},
    BinaryOperator{"lsr", 5, 22},
    BinaryOperator{"shr", 5, 22},
    BinaryOperator{">>", 5, 22},
    // Rotations are recognised, but there is no width to rotate in, so they
    // have no operation.
    BinaryOperator{"ror", 5, 0},
    BinaryOperator{"rol", 5, 0},
    BinaryOperator{"+", 4, 1},
    BinaryOperator{"-", 4, 2},
    BinaryOperator{"=", 3, 7},
    BinaryOperator{"eq", 3, 7},
    BinaryOperator{"<>", 3, 8},
    BinaryOperator{"!=", 3, 8},
    BinaryOperator{"ne", 3, 8},
    BinaryOperator{"<", 3, 9},
    BinaryOperator{"lt", 3, 9},
    BinaryOperator{">", 3, 10},
    BinaryOperator{"gt", 3, 10},
    BinaryOperator{">=", 3, 11},
    BinaryOperator{"ge", 3, 11},
    BinaryOperator{"gte", 3, 11},
    BinaryOperator{"<=", 3, 12},
    BinaryOperator{"le", 3, 12},
    BinaryOperator{"lte", 3, 12},
    BinaryOperator{"and", 2, 15},
    BinaryOperator{"&", 2, 15},
    BinaryOperator{"or", 1, 14},
    BinaryOperator{"|", 1, 14},
    BinaryOperator{"xor", 1, 16},
    BinaryOperator{"imp", 1, 17},
    BinaryOperator{"eqv", 1, 18},
};

constexpr std::array kPrefixOperators{
    PrefixOperator{"+", PrefixOp::Identity},     PrefixOperator{"-", PrefixOp::Negate},
    PrefixOperator{"!", PrefixOp::Complement},   PrefixOperator{"#", PrefixOp::Identity},
    PrefixOperator{"not", PrefixOp::Complement}, PrefixOperator{"high", PrefixOp::HighByte},
    PrefixOperator{"low", PrefixOp::LowByte},
};

constexpr std::string_view kOperatorChars = "+-*/\\%<=>!#|&^";

constexpr int kPowerCode = 6;
constexpr int kXorCode = 16;
// "^" at the level of xor, so that 'L'+z ^ '=' is ('L'+z) xor '='.
constexpr BinaryOperator kCaretXor{"^", 1, kXorCode};
constexpr PrefixOperator kTildeComplement{"~", PrefixOp::Complement};

constexpr auto OperatorCharTable(std::string_view extra) {
    std::array<bool, 256> table{};
    for (const char op : kOperatorChars) table[static_cast<unsigned char>(op)] = true;
    for (const char op : extra) table[static_cast<unsigned char>(op)] = true;
    return table;
}

constexpr std::size_t kLongestSymbol = 2;

} // namespace

const BinaryOperator* FindBinaryOperator(std::string_view text, Dialect dialect) {
    if (dialect == Dialect::Compatible && text == kCaretXor.Text) return &kCaretXor;
    for (const auto& op : kBinaryOperators) {
        if (EqualsNoCase(op.Text, text)) return &op;
    }
    return nullptr;
}

std::optional<std::string_view> MatchSymbolOperator(std::string_view text, Dialect dialect) {
    for (std::size_t length = kLongestSymbol; length > 0; --length) {
        if (text.size() < length) continue;
        const std::string_view candidate = text.substr(0, length);
        if (!IsOperatorChar(candidate.front(), dialect)) return std::nullopt;
        if (FindBinaryOperator(candidate, dialect) != nullptr) return candidate;
    }
    return std::nullopt;
}

bool IsOperatorOfLevel(std::string_view op, int level) {
    if (level < kLowestLevel || level > kHighestLevel) return false;
    const BinaryOperator* found = FindBinaryOperator(op);
    return found != nullptr && found->Level == level;
}

int OperatorCode(std::string_view op) {
    const BinaryOperator* found = FindBinaryOperator(op);
    return found == nullptr ? 0 : found->Code;
}

const PrefixOperator* FindPrefixOperator(std::string_view text, Dialect dialect) {
    if (dialect == Dialect::Compatible && text == kTildeComplement.Text) return &kTildeComplement;
    for (const auto& op : kPrefixOperators) {
        if (EqualsNoCase(op.Text, text)) return &op;
    }
    return nullptr;
}

const OperatorChars& OperatorCharsOf(Dialect dialect) {
    // Every character of every name and number is asked about: one look at
    // a table instead of a search of the list.
    static constexpr OperatorChars kStandard = OperatorCharTable("");
    static constexpr OperatorChars kCompatible = OperatorCharTable("~");
    return dialect == Dialect::Standard ? kStandard : kCompatible;
}

bool IsPower(const BinaryOperator& op) {
    return op.Code == kPowerCode;
}

} // namespace trident::expr
