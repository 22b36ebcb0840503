#include "expression/ErrorList.h"

#include "expression/CharTests.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace trident {

namespace {

struct ErrorMessage {
    std::int32_t Code;
    std::string_view Text;
};

// The wording is what users see in their listings; it is kept word for word,
// spelling included.
constexpr std::array kMessages{
    ErrorMessage{-12, "Non Standard Quote"},
    ErrorMessage{-11, "Implementation Forced to 32 bit signed integer"},
    ErrorMessage{-10, "Conversion to Signed 32 bit integer"},
    ErrorMessage{-9, "Conversion to Signed 24 bit integer"},
    ErrorMessage{-8, "Conversion to Signed 16 bit integer"},
    ErrorMessage{-7, "Conversion to Signed 8 bit integer"},
    ErrorMessage{-6, "Conversion to Unsigned 32 bit integer"},
    ErrorMessage{-5, "Conversion to Unsigned 24 bit integer"},
    ErrorMessage{-4, "Conversion to Unsigned 16 bit integer"},
    ErrorMessage{-3, "Conversion to Unsigned 8 bit integer"},
    ErrorMessage{-2, "Implementation Truncation to integer"},
    ErrorMessage{0, "No Error"},
    ErrorMessage{3, "Operand does not exist"},
    ErrorMessage{4, "Invalid Operator"},
    ErrorMessage{5, "Invalid Operand"},
    ErrorMessage{6, "Invalid Number"},
    ErrorMessage{7, "Missing Operator"},
    ErrorMessage{8, "Missing Operand"},
    ErrorMessage{9, "Missing ("},
    ErrorMessage{10, "Missing )"},
    ErrorMessage{11, "Invalid Math Operation"},
    ErrorMessage{12, "Unimplemented Operation"},
    ErrorMessage{13, "Unimplemented Function"},
    ErrorMessage{14, "Mismatched Parenthesis"},
    ErrorMessage{15, "Invalid Hex Number"},
    ErrorMessage{16, "Invalid Hex Digit"},
    ErrorMessage{17, "Invalid Decimal Digit"},
    ErrorMessage{18, "Invalid Octal Digit"},
    ErrorMessage{19, "Invalid Binary Digit"},
    ErrorMessage{20, "Invalid Octal Escape Sequence"},
    ErrorMessage{21, "Invalid Use Of Escape"},
    ErrorMessage{22, "Number Must Start With 0-9"},
    ErrorMessage{23, "Invalid Use Of Single Quotes"},
    ErrorMessage{24, "Invalid Use Of Double Quotes"},
    ErrorMessage{25, "MismatchedOpenAndCloseQuotes"},
    ErrorMessage{26, "Non Existant Variable"},
    ErrorMessage{27, "Unable To Add Variable"},
    ErrorMessage{28, "Invalid Precedence"},
    ErrorMessage{29, "Invalid Precision"},
    ErrorMessage{30, "Implementation Error"},
};

constexpr char kReaderSplit = '~';

// The number at the start of a text, read the lenient way: leading blanks
// skipped, an optional sign, then decimal digits up to the first other
// character; 0 when there are none.
std::int32_t LeadingNumber(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && IsBlank(text[i])) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
    std::int64_t value = 0;
    for (; i < text.size() && expr::IsDecimalDigit(text[i]); ++i) {
        value = std::min<std::int64_t>(value * 10 + (text[i] - '0'),
                                       std::numeric_limits<std::int32_t>::max());
    }
    return static_cast<std::int32_t>(negative ? -value : value);
}

// The two leading fields of a text split at a character; the second is
// empty when the character does not occur.
std::pair<std::string_view, std::string_view> SplitFields(std::string_view text, char at) {
    const std::size_t first = text.find(at);
    if (first == std::string_view::npos) return {text, {}};
    std::string_view rest = text.substr(first + 1);
    return {text.substr(0, first), rest.substr(0, rest.find(at))};
}

} // namespace

void ErrorList::AddError(EvalError code, std::string_view extra) {
    const auto number = static_cast<std::int32_t>(code);
    // A blank stands where a negative code has its minus sign.
    std::string entry = number < 0 ? "" : " ";
    entry += std::to_string(number);
    entry += Separator;
    entry += extra;
    pEntries.push_back(std::move(entry));
    pError = 1;
}

std::int32_t ErrorList::GetNextError() {
    if (pEntries.empty()) {
        pError = 0;
        return 0;
    }
    const std::string entry = std::move(pEntries.front());
    pEntries.pop_front();
    const auto [code, extra] = SplitFields(entry, Separator);
    pError = LeadingNumber(code);
    pExtra = extra;
    return pError;
}

// Deliberately split at "~" rather than at the recording separator: an entry
// whose extra string holds no "~" therefore yields its message alone, and an
// extra string with a "~" contributes only the text after it.
std::string ErrorList::GetNextErrorStr() {
    if (pEntries.empty()) {
        pError = 0;
        return ErrorString(0);
    }
    const std::string entry = std::move(pEntries.front());
    pEntries.pop_front();
    const auto [code, extra] = SplitFields(entry, kReaderSplit);
    pError = LeadingNumber(code);
    pExtra = extra;
    if (pExtra.empty()) return ErrorString(pError);
    return pExtra + " ~ " + ErrorString(pError);
}

void ErrorList::ClearAllErrors() {
    pEntries.clear();
    pError = 0;
}

std::string ErrorList::ErrorString(std::int32_t code) {
    const auto* found = std::find_if(kMessages.begin(), kMessages.end(),
                                     [code](const ErrorMessage& m) { return m.Code == code; });
    return std::string(found == kMessages.end() ? "Unknown Error" : found->Text);
}

} // namespace trident
