#pragma once

#include <string_view>

namespace trident {

// `text` without the blanks (spaces and tabs) around it: a view of the same
// characters, so that an operand trimmed in every pass is still a view into
// its statement (LineScanner::TrimBlanks makes a string).
constexpr std::string_view TrimmedView(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

} // namespace trident
