#pragma once

#include <cstdint>
#include <string_view>

namespace trident {

// Which rules the scanner cuts a line by: Trident's own, or those of the
// CP/M-era assemblers (Compatible mode), where a ";" comment runs to the end
// of the line, "!=" is an operator, and a statement after "!" or an indented
// `name equ value` reads as the era's assemblers read it.
enum class Dialect : std::uint8_t { Standard, Compatible };

// What the scanner noticed about a statement, for the dispatch.
enum StatementMark : std::uint8_t {
    // The label stands in column 1 without a colon: it may be an operation
    // word written there.
    BareLabel = 1,
    // The statement is the text after a "!" inside a ";" comment.
    FromComment = 2,
    // The statement begins with "=" right after a "!": a "!=" cut in two.
    EqualsAfterSeparator = 4,
    // Compatible mode: a control line, `$` and a word in column 1
    // (`$-MACRO`, `$TITLE('x')`, `$INCLUDE(file)`), all of it in Comment.
    ControlLine = 8,
};

// The four fields of one statement of a source line, as the scanner cut them:
// views into the line, valid while the line's text is. The scan of a line
// also splits each operand field, into a list of operands shared by the
// line's statements; a statement names its stretch of that list.
struct SourceStatement {
    std::string_view Label;
    std::string_view Operation;
    std::string_view Operands;
    std::string_view Comment;
    std::uint32_t FirstOperand = 0;
    std::uint16_t OperandCount = 0;
    // The field holds more operands than a statement may have: the
    // statement fails when it is prepared, not when its line is read, so
    // that the statements before it on the line still run.
    bool TooManyOperands = false;
    // StatementMarks the scanner found (a bit set).
    std::uint8_t Marks = 0;
};

} // namespace trident
