#pragma once

#include "source/LineScanner.h"
#include "source/SourceStatement.h"

#include <span>
#include <string_view>
#include <vector>

namespace trident {

// The statements of one line and their operands, as one scan found them.
// Kept from line to line, so that their storage is reused.
struct ScannedLine {
    std::vector<SourceStatement> Statements;
    std::vector<std::string_view> Operands;

    // Scans `line` in place of the line before (LineScanner::ScanLine).
    void Scan(std::string_view line, Dialect dialect) {
        Statements.clear();
        Operands.clear();
        LineScanner::ScanLine(line, Statements, Operands, dialect);
    }

    std::span<const std::string_view> OperandsOf(const SourceStatement& statement) const {
        return std::span(Operands).subspan(statement.FirstOperand, statement.OperandCount);
    }
};

} // namespace trident
