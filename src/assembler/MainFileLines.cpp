#include "assembler/MainFileLines.h"

#include "source/RunFailure.h"

#include <algorithm>
#include <cstdint>

namespace trident {
namespace {

// Counted sixteen bytes at a time in byte-wide counters, which the compiler
// keeps in one vector register: a fifth of the work of counting byte by byte.
std::size_t CountLineFeeds(std::string_view text) {
    constexpr std::size_t Lanes = 16;
    constexpr std::size_t Block = 255 * Lanes; // before a byte counter can overflow
    std::size_t total = 0;
    for (std::size_t start = 0; start < text.size(); start += Block) {
        const std::string_view block = text.substr(start, Block);
        std::uint8_t counts[Lanes] = {};
        std::size_t i = 0;
        for (; i + Lanes <= block.size(); i += Lanes)
            for (std::size_t lane = 0; lane < Lanes; ++lane)
                counts[lane] = static_cast<std::uint8_t>(counts[lane] + (block[i + lane] == '\n'));
        for (const std::uint8_t count : counts) total += count;
        total += static_cast<std::size_t>(std::count(block.begin() + i, block.end(), '\n'));
    }
    return total;
}

} // namespace

void MainFileLines::Clear() {
    pKept.Clear();
    pPrepared.clear();
    pLines.clear();
    pFailures.clear();
    pOperandMemos.Clear();
}

// Most lines end with a line feed and hold one statement of one or two
// operands.
void MainFileLines::Reserve(std::string_view text) {
    const std::size_t lines = CountLineFeeds(text) + 1;
    pLines.reserve(lines);
    pKept.Statements.reserve(lines);
    pKept.Keywords.reserve(lines);
    pPrepared.reserve(lines);
    pKept.Operands.reserve(2 * lines);
}

void MainFileLines::Load(SourceFile& file, bool stripParity, Dialect dialect) {
    Clear();
    pStrippedParity = stripParity;
    pDialect = dialect;
    file.Rewind();
    Reserve(file.Text());
    while (!file.AtEnd()) {
        const std::string_view line = file.ReadSourceLine();
        const std::size_t first = pKept.Statements.size();
        const std::size_t count = Cut(line, stripParity);
        pLines.push_back({first, static_cast<std::uint32_t>(count), file.Position()});
        for (const SourceStatement& statement : std::span(pKept.Statements).subspan(first, count)) {
            Prepared& prepared = pPrepared.emplace_back();
            if (statement.OperandCount > 0 && !statement.TooManyOperands)
                prepared.Memo.KeepOperands(pOperandMemos.Take(statement.OperandCount));
        }
    }
    file.Rewind();
}

// A line holds at least one statement, so none means it failed.
std::size_t MainFileLines::Cut(std::string_view line, bool stripParity) {
    try {
        return PrepareLine(line, stripParity, pDialect, pKept);
    } catch (const RunFailure&) {
        pFailures.emplace(pLines.size(), std::current_exception());
        return 0;
    }
}

void MainFileLines::RethrowCutFailure(std::size_t index) const {
    std::rethrow_exception(pFailures.at(index));
}

} // namespace trident
