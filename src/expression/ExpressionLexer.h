#pragma once

#include "expression/ExpressionToken.h"
#include "expression/OperatorTable.h"

#include <cstddef>
#include <string_view>

namespace trident::expr {

// Splits expression text into tokens. What a character means depends on the
// position: where an operand belongs "-" is a prefix and "&h" starts a
// number, where an operator belongs they are subtraction and "and". The
// parser therefore asks for the kind of token it expects next.
//
// Blanks and tabs separate tokens, and so do parentheses and the characters
// of the symbol operators; a quote at the start of an operand runs to its
// closing quote. A word operator ("mod", "not", ...) counts only when a
// blank or "(" follows it.
class ExpressionLexer {
  public:
    explicit ExpressionLexer(std::string_view text, Dialect dialect = Dialect::Standard)
        : pText(text), pDialect(dialect), pOperatorChars(&OperatorCharsOf(dialect)) {}

    Token NextOperand();
    Token NextOperator();

  private:
    bool AtEnd() const { return pPos >= pText.size(); }
    char CharAt(std::size_t pos) const { return pos < pText.size() ? pText[pos] : '\0'; }
    bool WordEndsHere() const;
    bool IsSeparator(char c) const;
    bool IsOperatorChar(char c) const { return (*pOperatorChars)[static_cast<unsigned char>(c)]; }
    void SkipBlanks();
    Token Take(TokenKind kind, std::size_t length);
    Token From(TokenKind kind, std::size_t start) const;
    std::size_t QuotedEnd(std::size_t start) const;
    std::size_t RunEnd(std::size_t start) const;
    std::size_t GroupEnd(std::size_t start) const;
    Token WordAsOperand(std::size_t start);
    Token SymbolAsOperator();
    Token WordAsOperator();

    std::string_view pText;
    std::size_t pPos = 0;
    Dialect pDialect;
    // The operator characters of the dialect, chosen once.
    const OperatorChars* pOperatorChars;
};

} // namespace trident::expr
