#pragma once

#include "assembler/DispatchIndex.h"
#include "assembler/OperandMemoStore.h"
#include "assembler/SourceStatement.h"
#include "assembler/StatementMemo.h"

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
// instead of scanning the line again, and a statement's operand list, its
// lower-case operation word and its dispatch steps are worked out once.
class MainFileLines {
  public:
    // What preparing a statement found, kept from its first preparation.
    struct Prepared {
        bool Ready = false;
        std::string_view Keyword;
        std::uint32_t FirstOperand = 0;
        std::uint32_t OperandCount = 0;
        DispatchIndex::StepSet Steps = 0;
        // What the handlers work out for the statement, for every pass.
        StatementMemo Memo;
    };

    void Clear();
    // Whether the kept lines had their parity bits stripped.
    bool StrippedParity() const { return pStrippedParity; }

    bool Has(std::size_t index) const { return index < pLines.size(); }
    // The statements of line `index` (from 0), which Has, and what their
    // preparation kept.
    std::span<const SourceStatement> Statements(std::size_t index) const;
    std::span<Prepared> PreparedOf(std::size_t index);
    // Where the line after line `index` starts in the file's text.
    std::size_t NextLineStart(std::size_t index) const { return pLines[index].NextLineStart; }

    // Keeps the next line (index == count so far) and returns its
    // statements. The line is a view into the main file's text, which must
    // outlive the kept lines; with parity stripping the stripped copy is
    // kept instead. Throws RunFailure, keeping nothing, when the line holds
    // too many statements.
    std::span<const SourceStatement> Add(std::string_view line, bool stripParity,
                                         std::size_t nextLineStart);

    // Keeps the preparation of a statement of a kept line: its operation
    // word in lower case (`keyword`, which may be a temporary) and its
    // operands (views into the line).
    void Keep(Prepared& prepared, std::string_view operation, std::string_view keyword,
              std::span<const std::string_view> operands, DispatchIndex::StepSet steps);
    std::span<const std::string_view> Operands(const Prepared& prepared) const;

  private:
    struct LineRange {
        std::size_t First = 0;
        std::size_t Count = 0;
        std::size_t NextLineStart = 0;
    };

    // Stripped lines and lower-cased words that differ from the text: the
    // elements of a deque never move, so views into them stay valid.
    std::deque<std::string> pTexts;
    std::vector<SourceStatement> pStatements;
    std::vector<Prepared> pPrepared;
    std::vector<std::string_view> pOperands;
    std::vector<LineRange> pLines;
    std::vector<SourceStatement> pScratch;
    OperandMemoStore pOperandMemos;
    bool pStrippedParity = false;
};

} // namespace trident
