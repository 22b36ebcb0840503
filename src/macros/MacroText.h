#pragma once

#include "macros/ParameterMap.h"
#include "source/ScannedLine.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

// The text work of the macro processor: composing body lines and
// substituting parameters in replayed lines.
namespace MacroText {

// One body line: label TAB operation TAB operands joined by "," and, when
// there is a comment, TAB comment. A statement that is only a comment (or
// nothing) becomes the comment alone, so that a "*" comment reads back as one.
std::string ComposeLine(std::string_view label, std::string_view operation,
                        std::span<const std::string_view> operands, std::string_view comment);

// Replaces every word of `text` that is a bound name by its text (a text in
// "<...>" loses the brackets), then resolves "^" and "&": "&" joins words
// and disappears, "^" escapes the next "^" or "&" and disappears itself.
std::string SubstituteParameters(std::string_view text, const ParameterMap& parameters);

// A line replayed from an expansion: split into statements, label,
// operation and every operand substituted, and composed again into
// `result`. The comment is kept as written. `scratch` holds the line's
// statements while it is composed. A line that grows past `longest`
// characters ends the run (LimitReached).
void SubstituteLine(std::string_view line, const ParameterMap& parameters, Dialect dialect,
                    ScannedLine& scratch, std::string& result, std::size_t longest);

} // namespace MacroText
} // namespace trident
