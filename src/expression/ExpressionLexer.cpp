#include "expression/ExpressionLexer.h"

#include "expression/CharTests.h"
#include "expression/OperatorTable.h"

namespace trident::expr {

namespace {

constexpr std::string_view kMantissaChars = "0123456789_,$.";

bool IsQuote(char c) {
    return c == '"' || c == '\'';
}

// True when a sign that follows run belongs to the exponent of a decimal
// number ("1.5e-3") rather than being an operator.
bool IsExponentSign(std::string_view run, char next) {
    if (run.size() < 2 || !IsDecimalDigit(run.front()) || !IsDecimalDigit(next)) return false;
    if (run.back() != 'e' && run.back() != 'E') return false;
    return run.substr(0, run.size() - 1).find_first_not_of(kMantissaChars) ==
           std::string_view::npos;
}

} // namespace

void ExpressionLexer::SkipBlanks() {
    while (!AtEnd() && IsBlank(pText[pPos])) ++pPos;
}

Token ExpressionLexer::Take(TokenKind kind, std::size_t length) {
    const Token token{kind, pText.substr(pPos, length)};
    pPos += length;
    return token;
}

Token ExpressionLexer::From(TokenKind kind, std::size_t start) const {
    return {kind, pText.substr(start, pPos - start)};
}

bool ExpressionLexer::IsSeparator(char c) const {
    return IsBlank(c) || c == '(' || c == ')' || IsOperatorChar(c);
}

bool ExpressionLexer::WordEndsHere() const {
    const char next = CharAt(pPos);
    return IsBlank(next) || next == '(';
}

// Past the quote that closes the literal opening at start: a doubled quote
// and a backslash with its next character stay inside. An unclosed literal
// runs to the end of the text; its conversion reports it.
std::size_t ExpressionLexer::QuotedEnd(std::size_t start) const {
    const char quote = pText[start];
    std::size_t pos = start + 1;
    while (pos < pText.size()) {
        if (pText[pos] == '\\') {
            pos += 2;
        } else if (pText[pos] != quote) {
            ++pos;
        } else if (CharAt(pos + 1) == quote) {
            pos += 2;
        } else {
            return pos + 1;
        }
    }
    return pText.size();
}

std::size_t ExpressionLexer::RunEnd(std::size_t start) const {
    std::size_t pos = start;
    while (pos < pText.size()) {
        const char c = pText[pos];
        const bool sign = c == '+' || c == '-';
        if (IsSeparator(c) &&
            !(sign && IsExponentSign(pText.substr(start, pos - start), CharAt(pos + 1)))) {
            break;
        }
        ++pos;
    }
    return pos;
}

// The position of the ")" that closes the group containing start, or the end
// of the text.
std::size_t ExpressionLexer::GroupEnd(std::size_t start) const {
    int depth = 0;
    std::size_t pos = start;
    while (pos < pText.size()) {
        const char c = pText[pos];
        if (IsQuote(c)) {
            pos = QuotedEnd(pos);
            continue;
        }
        if (c == ')') {
            if (depth == 0) return pos;
            --depth;
        }
        if (c == '(') ++depth;
        ++pos;
    }
    return pText.size();
}

Token ExpressionLexer::NextOperand() {
    SkipBlanks();
    if (AtEnd()) return {TokenKind::End, {}};
    const char c = pText[pPos];
    if (c == '(') return Take(TokenKind::Open, 1);
    if (c == ')') return Take(TokenKind::Close, 1);
    if (IsQuote(c)) return Take(TokenKind::Quoted, QuotedEnd(pPos) - pPos);
    const char marker = ToLowerAscii(CharAt(pPos + 1));
    if (c == '&' && (marker == 'h' || marker == 'o')) {
        const std::size_t start = pPos;
        pPos = RunEnd(pPos + 2);
        return From(TokenKind::Operand, start);
    }
    if (IsOperatorChar(c)) {
        const bool prefix = FindPrefixOperator(pText.substr(pPos, 1), pDialect) != nullptr;
        return Take(prefix ? TokenKind::Prefix : TokenKind::Stray, 1);
    }
    const std::size_t start = pPos;
    pPos = RunEnd(pPos);
    return WordAsOperand(start);
}

// "nul" tests the rest of its group, so it takes that text unevaluated;
// "not" is a prefix before a blank or "("; "high" and "low" are prefixes
// before a blank and functions before "(".
Token ExpressionLexer::WordAsOperand(std::size_t start) {
    const std::string_view word = pText.substr(start, pPos - start);
    if (IsDecimalDigit(word.front())) return {TokenKind::Operand, word};
    const char next = CharAt(pPos);
    if (EqualsNoCase(word, "nul") && (AtEnd() || IsBlank(next) || next == '(' || next == ')')) {
        const std::size_t end = GroupEnd(pPos);
        const Token token{TokenKind::NulTest, pText.substr(pPos, end - pPos)};
        pPos = end;
        return token;
    }
    const PrefixOperator* prefix = FindPrefixOperator(word, pDialect);
    if (prefix != nullptr &&
        (IsBlank(next) || (next == '(' && prefix->Op == PrefixOp::Complement))) {
        return {TokenKind::Prefix, word};
    }
    if (next == '(') {
        ++pPos;
        return {TokenKind::Function, word};
    }
    return {TokenKind::Operand, word};
}

Token ExpressionLexer::NextOperator() {
    SkipBlanks();
    if (AtEnd()) return {TokenKind::End, {}};
    const char c = pText[pPos];
    if (c == ')') return Take(TokenKind::Close, 1);
    if (c == '(') return Take(TokenKind::MissingOperator, 1);
    if (IsQuote(c)) return Take(TokenKind::MissingOperator, QuotedEnd(pPos) - pPos);
    return IsOperatorChar(c) ? SymbolAsOperator() : WordAsOperator();
}

Token ExpressionLexer::SymbolAsOperator() {
    const auto symbol = MatchSymbolOperator(pText.substr(pPos), pDialect);
    if (!symbol) return Take(TokenKind::InvalidOperator, 1);
    return Take(TokenKind::Binary, symbol->size());
}

// A number where an operator belongs is a missing operator; any other word
// that is no operator word is an invalid operator.
Token ExpressionLexer::WordAsOperator() {
    const std::size_t start = pPos;
    pPos = RunEnd(pPos);
    const std::string_view word = pText.substr(start, pPos - start);
    if (IsDecimalDigit(word.front())) return {TokenKind::MissingOperator, word};
    if (FindBinaryOperator(word, pDialect) != nullptr && WordEndsHere())
        return {TokenKind::Binary, word};
    return {TokenKind::InvalidOperator, word};
}

} // namespace trident::expr
