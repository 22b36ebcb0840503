#pragma once

#include <string>

namespace trident {

// Where a statement came from. For a line produced by a macro expansion, File
// and Line are those of the line that invoked the outermost macro, and Macro
// names the macro being expanded.
struct SourcePosition {
    std::string File;
    int Line = 0;
    std::string Macro;
};

} // namespace trident
