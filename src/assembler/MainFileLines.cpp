#include "assembler/MainFileLines.h"

#include "assembler/LineScanner.h"

namespace trident {

void MainFileLines::Clear() {
    pTexts.clear();
    pStatements.clear();
    pPrepared.clear();
    pOperands.clear();
    pLines.clear();
    pOperandMemos.Clear();
}

std::span<const SourceStatement> MainFileLines::Statements(std::size_t index) const {
    const LineRange& range = pLines[index];
    return std::span<const SourceStatement>(pStatements).subspan(range.First, range.Count);
}

std::span<MainFileLines::Prepared> MainFileLines::PreparedOf(std::size_t index) {
    const LineRange& range = pLines[index];
    return std::span<Prepared>(pPrepared).subspan(range.First, range.Count);
}

std::span<const SourceStatement> MainFileLines::Add(std::string_view line, bool stripParity,
                                                    std::size_t nextLineStart) {
    if (pLines.empty()) pStrippedParity = stripParity;
    if (stripParity) {
        std::string& text = pTexts.emplace_back(line);
        LineScanner::StripParityBits(text);
        line = text;
    }
    try {
        LineScanner::SplitSourceLine(line, pScratch);
    } catch (...) {
        if (stripParity) pTexts.pop_back();
        throw;
    }
    pLines.push_back({pStatements.size(), pScratch.size(), nextLineStart});
    pStatements.insert(pStatements.end(), pScratch.begin(), pScratch.end());
    pPrepared.resize(pStatements.size());
    return Statements(pLines.size() - 1);
}

void MainFileLines::Keep(Prepared& prepared, std::string_view operation, std::string_view keyword,
                         std::span<const std::string_view> operands, DispatchIndex::StepSet steps) {
    // Most sources write operation words in lower case already.
    prepared.Keyword =
        keyword == operation ? operation : std::string_view(pTexts.emplace_back(keyword));
    prepared.FirstOperand = static_cast<std::uint32_t>(pOperands.size());
    prepared.OperandCount = static_cast<std::uint32_t>(operands.size());
    pOperands.insert(pOperands.end(), operands.begin(), operands.end());
    prepared.Steps = steps;
    if (!operands.empty()) prepared.Memo.KeepOperands(pOperandMemos.Take(operands.size()));
    prepared.Ready = true;
}

std::span<const std::string_view> MainFileLines::Operands(const Prepared& prepared) const {
    return std::span<const std::string_view>(pOperands).subspan(prepared.FirstOperand,
                                                                prepared.OperandCount);
}

} // namespace trident
