#pragma once

#include "assembler/OperandMemoStore.h"
#include "assembler/PreparedLine.h"
#include "assembler/SourceFile.h"
#include "source/SourceStatement.h"
#include "source/StatementMemo.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace trident {

// The statements of the main file's lines, all cut when the file is opened.
// Every pass reads the main file from its first line, and the text does not
// change during an assembly, so the passes take a line's statements from
// here instead of scanning the line. A statement's operands, its
// lower-case operation word is worked out once, too.
class MainFileLines {
  public:
    // What preparing a statement needs besides its fields, one for every
    // kept statement.
    struct Prepared {
        // What the handlers work out for the statement, for every pass.
        StatementMemo Memo;
    };

    // Cuts every line of `file` (which is left at its first line). The kept statements are views
    // into the file's text, which must outlive them; with parity stripping, into stripped copies of
    // the lines.
    void Load(SourceFile& file, bool stripParity, Dialect dialect);
    void Clear();
    // Whether the kept lines had their parity bits stripped.
    bool StrippedParity() const { return pStrippedParity; }
    Dialect CutDialect() const { return pDialect; }

    // Whether line `index` (from 0) could not be cut (too many
    // statements), and the RunFailure that says so. The failure is thrown
    // when the line is reached, not when it is cut, so that the statements
    // before it run first.
    bool CutFailed(std::size_t index) const { return pLines[index].Count == 0; }
    [[noreturn]] void RethrowCutFailure(std::size_t index) const;
    // The statements of line `index`, and what their preparation needs.
    std::span<const SourceStatement> Statements(std::size_t index) const {
        const LineRange& range = pLines[index];
        return {pKept.Statements.data() + range.First, range.Count};
    }
    // Their operation words in lower case.
    std::span<const std::string_view> Keywords(std::size_t index) const {
        const LineRange& range = pLines[index];
        return {pKept.Keywords.data() + range.First, range.Count};
    }
    std::span<Prepared> PreparedOf(std::size_t index) {
        const LineRange& range = pLines[index];
        return {pPrepared.data() + range.First, range.Count};
    }
    // The operands of every kept statement; a statement's FirstOperand
    // counts from the start.
    std::span<const std::string_view> Operands() const { return pKept.Operands; }
    // Where the line after line `index` starts in the file's text.
    std::size_t NextLineStart(std::size_t index) const { return pLines[index].NextLineStart; }

  private:
    struct LineRange {
        std::size_t First = 0;
        std::uint32_t Count = 0;
        std::size_t NextLineStart = 0;
    };

    void Reserve(std::string_view text);
    // Scans a line into the kept statements and returns their number, or
    // keeps the line's failure and returns 0.
    std::size_t Cut(std::string_view line, bool stripParity);

    PreparedStatements pKept;
    std::vector<Prepared> pPrepared;
    std::vector<LineRange> pLines;
    // Why the lines that failed to be cut failed, by line.
    std::unordered_map<std::size_t, std::exception_ptr> pFailures;
    OperandMemoStore pOperandMemos;
    bool pStrippedParity = false;
    Dialect pDialect = Dialect::Standard;
};

} // namespace trident
