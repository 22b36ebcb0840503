// The records that end the Intel HEX and S-record texts.
#include "output/HexText.h"
#include "output/IntelHexWriter.h"
#include "output/SrecWriter.h"

namespace trident {

void IntelHexWriter::WriteEndRecord(std::uint16_t startAddress) {
    const int sum = (startAddress >> 8) + (startAddress & 0xFF);
    const FixedHex<4> address(startAddress);
    const FixedHex<2> checksum(static_cast<std::uint32_t>(-sum));
    Ink().Append({{":", MarkInk},
                  {"00", CountInk},
                  {address, AddressInk},
                  {"00", TypeInk},
                  {checksum, ChecksumInk}});
}

void SrecWriter::WriteEndRecord(std::uint16_t startAddress) {
    const int sum = 3 + (startAddress >> 8) + (startAddress & 0xFF);
    const FixedHex<4> address(startAddress);
    const FixedHex<2> checksum(static_cast<std::uint32_t>(~sum));
    Ink().Append(
        {{"S9", MarkInk}, {"03", CountInk}, {address, AddressInk}, {checksum, ChecksumInk}});
}

} // namespace trident
