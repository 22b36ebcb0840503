// The records that end the Intel HEX and S-record texts.
#include "output/IntelHexWriter.h"
#include "output/SrecWriter.h"

namespace trident {

void IntelHexWriter::WriteEndRecord(std::uint16_t startAddress) {
    const int sum = (startAddress >> 8) + (startAddress & 0xFF);
    Ink().Append(":", MarkInk);
    Ink().Append("00", CountInk);
    Ink().Append(Hex4(startAddress), AddressInk);
    Ink().Append("00", TypeInk);
    Ink().Append(Hex2(-sum), ChecksumInk);
}

void SrecWriter::WriteEndRecord(std::uint16_t startAddress) {
    const int sum = 3 + (startAddress >> 8) + (startAddress & 0xFF);
    Ink().Append("S9", MarkInk);
    Ink().Append("03", CountInk);
    Ink().Append(Hex4(startAddress), AddressInk);
    Ink().Append(Hex2(~sum), ChecksumInk);
}

} // namespace trident
