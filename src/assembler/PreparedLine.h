#pragma once

#include "source/SourceStatement.h"

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

// Statements made ready for the dispatch, from one line or (for the main
// file's kept lines) many: the fields and operands as the scanner cut them,
// and each statement's operation word in lower case. Texts that differ
// from the line (stripped lines, lowered words) live in Texts, whose
// elements never move, so views into them stay valid.
struct PreparedStatements {
    std::vector<SourceStatement> Statements;
    std::vector<std::string_view> Operands;
    std::vector<std::string_view> Keywords;
    std::deque<std::string> Texts;

    void Clear() {
        Statements.clear();
        Operands.clear();
        Keywords.clear();
        Texts.clear();
    }
};

// The one preparation of a source line, whatever source it came from: the
// parity bits stripped when asked, the line cut into statements (by the
// rules of `dialect`) and
// operands (appended to `into`), and their operation words lowered. Returns
// the number of statements; a line with too many throws RunFailure and
// leaves `into` as it was.
std::size_t PrepareLine(std::string_view line, bool stripParity, Dialect dialect,
                        PreparedStatements& into);

} // namespace trident
