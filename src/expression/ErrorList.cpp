#include "expression/ErrorList.h"

#include <algorithm>
#include <array>
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
    ErrorMessage{-13, "'^' is the power operator; xor is exclusive or"},
    ErrorMessage{-12, "Non Standard Quote"},
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
    ErrorMessage{28, "String longer than 65535 characters"},
    ErrorMessage{30, "Implementation Error"},
};

constexpr char kCut = '\x7f';

} // namespace

void ErrorList::AddError(EvalError code, std::string_view extra) {
    pFaults.push_back({code, std::string(extra)});
}

std::int32_t ErrorList::GetNextError() {
    if (pFaults.empty()) return 0;
    const Fault fault = std::move(pFaults.front());
    pFaults.pop_front();
    pExtra = fault.Extra.substr(0, fault.Extra.find(kCut));
    return static_cast<std::int32_t>(fault.Code);
}

std::string ErrorList::ErrorString(std::int32_t code) {
    const auto* found = std::find_if(kMessages.begin(), kMessages.end(),
                                     [code](const ErrorMessage& m) { return m.Code == code; });
    return std::string(found == kMessages.end() ? "Unknown Error" : found->Text);
}

} // namespace trident
