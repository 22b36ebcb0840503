#include "output/LoaderWriter.h"

#include "output/HexText.h"
#include "output/ObjectInks.h"

namespace trident {

using ObjectInks::LineEnd;

void LoaderWriter::Restart(std::uint16_t address) {
    pRestart = true;
    pAddress = address;
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
    const FixedHex<4> address(pAddress);
    pText.Append({{pStyle == LoaderStyle::Sde ? ".\r\n\r\nE" : "S", ObjectInks::Command},
                  {address, ObjectInks::Address},
                  {LineEnd, ObjectInks::Address}});
    pRestart = false;
}

void LoaderWriter::WriteByte(std::uint8_t byte, bool fromWord) {
    const FixedHex<2> digits(byte);
    const Colour ink = fromWord ? ObjectInks::Word : ObjectInks::Byte;
    pText.Append({{digits, ink}, {LineEnd, ink}});
    ++pAddress;
}

void LoaderWriter::Finish() {
    if (!pEnabled) return;
    pText.Append(pStyle == LoaderStyle::Sde ? "." : ".\r\n", ObjectInks::Command);
}

void LoaderWriter::Clear() {
    pText.Clear();
    pRestart = false;
    pAddress = 0;
}

} // namespace trident
