#include "assembler/DataBytes.h"

#include "assembler/Assembly.h"

namespace trident {
namespace {

constexpr int BytesPerRow = 4;

} // namespace

DataBytes::DataBytes(Assembly& run, std::string& text)
    : pRun(run), pText(text), pListed(run.GetListing().ListsLines()) {}

void DataBytes::Byte(const Value& value) {
    Byte(WholeBits(value));
}

void DataBytes::Byte(std::uint32_t whole) {
    Separate(1);
    pRun.EmitBits(whole, 8, pText);
}

void DataBytes::Word(const Value& value) {
    Separate(2);
    pRun.EmitBits(WholeBits(value), 16, pText);
}

// EmitBits gives digits exactly when the line is listed.
void DataBytes::Separate(int byteCount) {
    if (!pListed) return;
    if (pCount > 0) pText += pCount % BytesPerRow == 0 ? "\r\n\t" : " ";
    pCount += byteCount;
}

} // namespace trident
