#pragma once

#include "expression/ErrorList.h"
#include "symbols/Value.h"

#include <string>
#include <string_view>

namespace trident::expr {

// Conversions of literal text into values. Faults are recorded in the given
// error list; a failed number is the empty value, a failed string is the
// text decoded up to the fault.

// A number literal in one of the radixes, with its prefix or suffix and any
// "_", "," and "$" separators. A value that fits is a 32-bit integer,
// anything else a double.
Value EvalNumber(std::string_view text, ErrorList& errors);

// A character constant with its enclosing single quotes: the character codes
// taken as one big-endian number ("'AB'" is 4142 hexadecimal).
Value SingleQuoteStrToNumber(std::string_view text, ErrorList& errors);

// The codes of the characters taken as one big-endian number, as a
// character constant's.
Value CharacterCodes(std::string_view characters);

// A quoted string with its enclosing quotes, escapes decoded.
std::string DoubleQuotedStringToString(std::string_view text, ErrorList& errors);

} // namespace trident::expr
