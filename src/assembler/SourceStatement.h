#pragma once

#include <string>

namespace trident {

// The four fields of one statement of a source line, as the scanner cut them.
struct SourceStatement {
    std::string Label;
    std::string Operation;
    std::string Operands;
    std::string Comment;
};

} // namespace trident
