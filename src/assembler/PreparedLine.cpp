#include "assembler/PreparedLine.h"

#include "base/Text.h"
#include "source/LineScanner.h"
#include "source/RunFailure.h"

#include <algorithm>

namespace trident {

std::size_t PrepareLine(std::string_view line, bool stripParity, Dialect dialect,
                        PreparedStatements& into) {
    if (stripParity) {
        std::string& text = into.Texts.emplace_back(line);
        LineScanner::StripParityBits(text);
        line = text;
    }
    const std::size_t first = into.Statements.size();
    const std::size_t firstOperand = into.Operands.size();
    try {
        LineScanner::ScanLine(line, into.Statements, into.Operands, dialect);
    } catch (const RunFailure&) {
        into.Statements.resize(first);
        into.Operands.resize(firstOperand);
        throw;
    }
    for (std::size_t i = first; i < into.Statements.size(); ++i) {
        // Most sources write operation words in lower case already.
        const std::string_view operation = into.Statements[i].Operation;
        into.Keywords.push_back(
            std::any_of(operation.begin(), operation.end(), IsUpperAscii)
                ? std::string_view(into.Texts.emplace_back(LowerCase(operation)))
                : operation);
    }
    return into.Statements.size() - first;
}

} // namespace trident
