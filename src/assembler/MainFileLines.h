#pragma once

#include "assembler/DispatchIndex.h"
#include "assembler/SourceStatement.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

// The statements of the main file's lines as the first pass cut them. Every
// pass reads the main file from its first line, and the text does not change
// during an assembly, so later passes take a line's statements from here
// instead of scanning the line again. A statement's operands, its
// lower-case operation word and its dispatch steps are worked out when its
// line is kept.
class MainFileLines {
  public:
    // What preparing a statement needs besides its fields, one for every
    // kept statement.
    struct Prepared {
        std::string_view Keyword;
        DispatchIndex::StepSet Steps = 0;
    };

    // Forgets every line; makes room for those of `text`, the main file
    // whose lines are kept next, one statement a line.
    void Clear(std::string_view text = {});
    // Whether the kept lines had their parity bits stripped.
    bool StrippedParity() const { return pStrippedParity; }

    bool Has(std::size_t index) const { return index < pLines.size(); }
    // The statements of line `index` (from 0), which Has, and what their
    // preparation needs.
    std::span<const SourceStatement> Statements(std::size_t index) const {
        const LineRange& range = pLines[index];
        return {pStatements.data() + range.First, range.Count};
    }
    std::span<Prepared> PreparedOf(std::size_t index) {
        const LineRange& range = pLines[index];
        return {pPrepared.data() + range.First, range.Count};
    }
    // The operands of every kept statement; a statement's FirstOperand
    // counts from the start. Changes when a line is kept.
    std::span<const std::string_view> Operands() const { return pOperands; }
    // Where the line after line `index` starts in the file's text.
    std::size_t NextLineStart(std::size_t index) const { return pLines[index].NextLineStart; }

    // Keeps the next line (index == count so far) and returns its
    // statements, prepared for the dispatch `steps`. The line is a view
    // into the main file's text, which must outlive the kept lines; with
    // parity stripping the stripped copy is kept instead. Throws
    // RunFailure, keeping nothing, when the line holds too many statements.
    std::span<const SourceStatement> Add(std::string_view line, bool stripParity,
                                         std::size_t nextLineStart, const DispatchIndex& steps);

  private:
    struct LineRange {
        std::uint32_t First = 0;
        std::uint32_t Count = 0;
        std::size_t NextLineStart = 0;
    };

    Prepared Prepare(const SourceStatement& statement, const DispatchIndex& steps);

    // Stripped lines and lower-cased words that differ from the text: the
    // elements of a deque never move, so views into them stay valid.
    std::deque<std::string> pTexts;
    std::vector<SourceStatement> pStatements;
    std::vector<Prepared> pPrepared;
    std::vector<std::string_view> pOperands;
    std::vector<LineRange> pLines;
    bool pStrippedParity = false;
};

} // namespace trident
