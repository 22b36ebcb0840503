#pragma once

#include "assembler/SourceStatement.h"

#include <cstddef>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

// The statements of the main file's lines as the first pass cut them. Every
// pass reads the main file from its first line, and the text does not change
// during an assembly, so later passes take a line's statements from here
// instead of copying and scanning the line again.
class MainFileLines {
  public:
    void Clear();
    // Whether the kept lines had their parity bits stripped.
    bool StrippedParity() const { return pStrippedParity; }

    bool Has(std::size_t index) const { return index < pLines.size(); }
    // The statements of line `index` (from 0), which Has.
    std::span<const SourceStatement> Statements(std::size_t index) const;
    // Keeps the next line (index == count so far), with its parity bits
    // stripped when asked, and returns its statements. Throws RunFailure,
    // keeping nothing, when the line holds too many statements.
    std::span<const SourceStatement> Add(std::string_view line, bool stripParity);

  private:
    struct LineRange {
        std::size_t First = 0;
        std::size_t Count = 0;
    };

    // One string per line: the elements of a deque never move, so the
    // statements' views into them stay valid.
    std::deque<std::string> pTexts;
    std::vector<SourceStatement> pStatements;
    std::vector<LineRange> pLines;
    std::vector<SourceStatement> pScratch;
    bool pStrippedParity = false;
};

} // namespace trident
