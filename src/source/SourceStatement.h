#pragma once

#include <cstdint>
#include <string_view>

namespace trident {

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
};

} // namespace trident
