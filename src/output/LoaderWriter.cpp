#include "output/LoaderWriter.h"

#include "output/HexText.h"

#include <cmath>
#include <cstdio>

namespace trident {
namespace {

constexpr Colour CommandInk{0, 128, 0};
constexpr Colour AddressInk{0, 0, 0};
constexpr Colour ByteInk{0, 0, 160};
constexpr Colour WordInk{0, 0, 255};

} // namespace

void LoaderWriter::Restart(std::uint16_t address) {
    pRestart = true;
    pAddress = address;
}

void LoaderWriter::WriteValue(const Value& value, int width) {
    WriteBits(WholeBits(value), width);
}

void LoaderWriter::WriteBits(std::uint32_t whole, int width) {
    if (!pEnabled) return;
    if (pRestart) OpenBlock();
    if (width == 16) {
        WriteByte(static_cast<std::uint8_t>(whole & 0xFF), true);
        WriteByte(static_cast<std::uint8_t>((whole >> 8) & 0xFF), true);
    } else {
        WriteByte(static_cast<std::uint8_t>(whole & 0xFF), false);
    }
}

void LoaderWriter::OpenBlock() {
    // The sde opening starts with the "." that ends the previous entry
    // command, so a program that begins with an org starts with a lone ".".
    pText.Append(pStyle == LoaderStyle::Sde ? ".\r\n\r\nE" : "S", CommandInk);
    pText.Append(HexText(pAddress, 4) + "\r\n", AddressInk);
    pRestart = false;
}

void LoaderWriter::WriteByte(std::uint8_t byte, bool fromWord) {
    std::string& line = pLineBuffer;
    line.clear();
    AppendHex(line, byte, 2);
    line += "\r\n";
    pText.Append(line, fromWord ? WordInk : ByteInk);
    ++pAddress;
}

void LoaderWriter::Finish() {
    if (!pEnabled) return;
    pText.Append(pStyle == LoaderStyle::Sde ? "." : ".\r\n", CommandInk);
}

void LoaderWriter::Clear() {
    pText.Clear();
    pRestart = false;
    pAddress = 0;
}

} // namespace trident
