#pragma once

#include <string_view>

namespace trident {

// The four fields of one statement of a source line, as the scanner cut them:
// views into the line, valid while the line's text is.
struct SourceStatement {
    std::string_view Label;
    std::string_view Operation;
    std::string_view Operands;
    std::string_view Comment;
};

} // namespace trident
