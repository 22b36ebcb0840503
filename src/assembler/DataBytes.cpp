#include "assembler/DataBytes.h"

#include "assembler/Assembly.h"

namespace trident {
namespace {

constexpr int BytesPerRow = 4;

} // namespace

void DataBytes::Byte(const Value& value) {
    Append(pRun.EmitValue(value, 8), 1);
}

void DataBytes::Word(const Value& value) {
    Append(pRun.EmitValue(value, 16), 2);
}

void DataBytes::Append(const std::string& digits, int byteCount) {
    if (digits.empty()) return; // a line that will not be listed
    if (pCount > 0) pText += pCount % BytesPerRow == 0 ? "\r\n\t" : " ";
    pText += digits;
    pCount += byteCount;
}

} // namespace trident
