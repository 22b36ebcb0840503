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
// `radix` is the radix of numbers written without a suffix (.radix): in
// another radix than 10, a text of that radix's digits alone is read in it
// ("10b" is hexadecimal in radix 16), anything else by the usual rules.
Value EvalNumber(std::string_view text, ErrorList& errors, int radix = 10);

// A character constant with its enclosing single quotes: the character codes
// taken as one big-endian number ("'AB'" is 4142 hexadecimal).
Value SingleQuoteStrToNumber(std::string_view text, ErrorList& errors);

// The codes of the characters taken as one big-endian number, as a
// character constant's.
Value CharacterCodes(std::string_view characters);

// A quoted string with its enclosing quotes, escapes decoded.
std::string DoubleQuotedStringToString(std::string_view text, ErrorList& errors);

} // namespace trident::expr
