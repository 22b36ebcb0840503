#pragma once

#include <string>
#include <string_view>

namespace trident::expr {

// Why decoding the inside of a quoted literal stopped early.
enum class QuoteFault {
    None,
    LoneQuote,     // a single quote character followed by another character
    OctalOverflow, // an octal escape above 255
    TrailingEscape // a backslash with nothing after it
};

struct DecodedText {
    std::string Bytes; // the characters decoded up to the end or the fault
    QuoteFault Fault = QuoteFault::None;
};

// Decodes the characters between the enclosing quotes of a literal quoted
// with quote: a doubled quote stands for one, a backslash starts an escape
// (\t \n \r \a \b \f \v, one to three octal digits, or any other character
// standing for itself). A lone quote at the very end is dropped.
DecodedText DecodeQuotedBody(std::string_view body, char quote);

} // namespace trident::expr
