#pragma once

#include "macros/BlockType.h"
#include "macros/ParameterMap.h"
#include "source/SourcePosition.h"

#include <cstddef>
#include <string>
#include <vector>

namespace trident {

// One level of the macro expansion stack: the text being replayed, how far
// it has been read, and the names substituted in its lines. A repeat level
// replays its text once per iteration.
struct ExpansionLevel {
    std::string Name;
    std::string Text;
    std::size_t Position = 0;
    // The line that invoked this level, for diagnostics.
    SourcePosition InvokedAt;

    BlockType Type = BlockType::Macro;
    // The conditional depth when the level was entered; exitm closes the
    // conditionals opened inside the level back to it.
    int ConditionalDepth = 0;
    ParameterMap Parameters;

    // Iterations of a repeat block, counted from 1. An irp or irpc level
    // binds `Parameter` to item number `Iteration` of `Items` before each
    // pass over its text; a rept level has no items.
    int Iteration = 1;
    int Iterations = 1;
    std::string Parameter;
    std::vector<std::string> Items;

    bool UsedUp() const { return Position >= Text.size(); }
    // The characters the level holds: its text, arguments and items.
    std::size_t TextSize() const {
        std::size_t size = Text.size() + Parameters.TextSize() + Parameter.size();
        for (const std::string& item : Items) size += item.size();
        return size;
    }

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

    // Binds the parameter of the current iteration (irp, irpc).
    void BindIterationItem();
    // Called when the text is used up: a repeat level with iterations left
    // rewinds its text for the next one and returns true; otherwise the
    // level is finished and the caller leaves it.
    bool StartNextIteration();
};

} // namespace trident
