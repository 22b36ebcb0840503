#include "assembler/DataBytes.h"

#include "assembler/Assembly.h"

namespace trident {
namespace {

constexpr int BytesPerRow = 4;

} // namespace

void DataBytes::Byte(const Value& value) {
    Byte(WholeBits(value));
}

void DataBytes::Byte(std::uint32_t whole) {
    pDigits.clear();
    pRun.EmitBits(whole, 8, pDigits);
    Append(pDigits, 1);
}

void DataBytes::Word(const Value& value) {
    pDigits.clear();
    pRun.EmitBits(WholeBits(value), 16, pDigits);
    Append(pDigits, 2);
}

void DataBytes::Append(std::string_view digits, int byteCount) {
    if (digits.empty()) return; // a line that will not be listed
    if (pCount > 0) pText += pCount % BytesPerRow == 0 ? "\r\n\t" : " ";
    pText += digits;
    pCount += byteCount;
}

} // namespace trident
