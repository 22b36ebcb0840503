#pragma once

#include "assembler/SourcePosition.h"

#include <cstddef>
#include <string>

namespace trident {

// One level of the macro expansion stack: the text being replayed and how
// far it has been read.
struct ExpansionLevel {
    std::string Name;
    std::string Text;
    std::size_t Position = 0;
    // The line that invoked this level, for diagnostics.
    SourcePosition InvokedAt;

    bool UsedUp() const { return Position >= Text.size(); }

    // The next line of the text; a run of line ends after it is stepped over.
    std::string NextLine() {
        const std::size_t start = Position;
        while (Position < Text.size() && Text[Position] != '\r' && Text[Position] != '\n')
            ++Position;
        std::string line = Text.substr(start, Position - start);
        while (Position < Text.size() && (Text[Position] == '\r' || Text[Position] == '\n'))
            ++Position;
        return line;
    }
};

} // namespace trident
