#include "assembler/MainFileLines.h"

#include "assembler/LineScanner.h"

namespace trident {

void MainFileLines::Clear() {
    pTexts.clear();
    pStatements.clear();
    pLines.clear();
}

std::span<const SourceStatement> MainFileLines::Statements(std::size_t index) const {
    const LineRange& range = pLines[index];
    return std::span<const SourceStatement>(pStatements).subspan(range.First, range.Count);
}

std::span<const SourceStatement> MainFileLines::Add(std::string_view line, bool stripParity) {
    if (pLines.empty()) pStrippedParity = stripParity;
    std::string& text = pTexts.emplace_back(line);
    if (stripParity) LineScanner::StripParityBits(text);
    try {
        LineScanner::SplitSourceLine(text, pScratch);
    } catch (...) {
        pTexts.pop_back();
        throw;
    }
    pLines.push_back({pStatements.size(), pScratch.size()});
    pStatements.insert(pStatements.end(), pScratch.begin(), pScratch.end());
    return Statements(pLines.size() - 1);
}

} // namespace trident
