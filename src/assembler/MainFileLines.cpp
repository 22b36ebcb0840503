#include "assembler/MainFileLines.h"

#include "assembler/LineScanner.h"

#include <algorithm>
#include <cstring>

namespace trident {

void MainFileLines::Clear(std::string_view text) {
    pTexts.clear();
    pStatements.clear();
    pPrepared.clear();
    pOperands.clear();
    pLines.clear();
    // A line ends at every LF (or at a CR), and most lines hold one
    // statement of one or two operands.
    std::size_t lines = 1;
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p < end; ++lines) {
        const void* lineFeed = std::memchr(p, '\n', static_cast<std::size_t>(end - p));
        if (!lineFeed) break;
        p = static_cast<const char*>(lineFeed) + 1;
    }
    pLines.reserve(lines);
    pStatements.reserve(lines);
    pPrepared.reserve(lines);
    pOperands.reserve(2 * lines);
}

std::span<const SourceStatement> MainFileLines::Add(std::string_view line, bool stripParity,
                                                    std::size_t nextLineStart,
                                                    const DispatchIndex& steps) {
    if (pLines.empty()) pStrippedParity = stripParity;
    if (stripParity) {
        std::string& text = pTexts.emplace_back(line);
        LineScanner::StripParityBits(text);
        line = text;
    }
    const std::size_t first = pStatements.size();
    const std::size_t firstOperand = pOperands.size();
    try {
        LineScanner::ScanLine(line, pStatements, pOperands);
    } catch (...) {
        pStatements.resize(first);
        pOperands.resize(firstOperand);
        if (stripParity) pTexts.pop_back();
        throw;
    }
    const std::size_t count = pStatements.size() - first;
    pLines.push_back(
        {static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(count), nextLineStart});
    for (std::size_t i = first; i < pStatements.size(); ++i)
        pPrepared.push_back(Prepare(pStatements[i], steps));
    return Statements(pLines.size() - 1);
}

MainFileLines::Prepared MainFileLines::Prepare(const SourceStatement& statement,
                                               const DispatchIndex& steps) {
    const std::string_view operation = statement.Operation;
    const auto upper = [](char c) { return c >= 'A' && c <= 'Z'; };
    // Most sources write operation words in lower case already.
    std::string_view keyword = operation;
    if (std::any_of(operation.begin(), operation.end(), upper))
        keyword = pTexts.emplace_back(LineScanner::LowerCase(operation));
    return {keyword, steps.StepsFor(keyword)};
}

} // namespace trident
