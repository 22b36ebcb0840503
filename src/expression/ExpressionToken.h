#pragma once

#include <string_view>

namespace trident::expr {

enum class TokenKind {
    End,             // no more text in the group or the expression
    Open,            // "("
    Close,           // ")"
    Operand,         // a number or a name, as written
    Quoted,          // a character constant or a string, quotes included
    Function,        // a name written immediately before "(" (the "(" is taken)
    Prefix,          // an operator before an operand
    NulTest,         // "nul" with the rest of its group as the text
    Binary,          // a binary operator
    Stray,           // operator character where an operand belongs
    InvalidOperator, // text that is no operator where an operator belongs
    MissingOperator, // an operand where an operator belongs
};

// One piece of an expression; Text is a view into the expression text.
struct Token {
    TokenKind Kind;
    std::string_view Text;
};

} // namespace trident::expr
