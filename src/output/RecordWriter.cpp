#include "output/RecordWriter.h"

#include "output/ColouredLine.h"
#include "output/HexText.h"

#include <bit>

namespace trident {
namespace {

constexpr Colour MarkInk{0, 128, 0};
constexpr Colour CountInk{0, 160, 160};
constexpr Colour AddressInk{0, 0, 0};
constexpr Colour TypeInk{160, 0, 0};
constexpr Colour ByteInk{0, 0, 160};
constexpr Colour WordInk{0, 0, 255};
constexpr Colour ChecksumInk{160, 0, 0};
constexpr std::string_view LineEnd = "\r\n";

} // namespace

void RecordWriter::Reopen() {
    if (pOpen && pCount > 0) Close();
    Open();
}

void RecordWriter::Open() {
    pOpen = true;
    pRestart = false;
    pRecordAddress = pAddress;
    pCount = 0;
    pWordBytes = 0;
}

void RecordWriter::Close() {
    WriteRecord(pFormat.Mark, pRecordAddress, pBytes.data(), pCount, pWordBytes, true);
    pOpen = false;
    pCount = 0;
    pWordBytes = 0;
}

void RecordWriter::WriteRecord(std::string_view mark, std::uint16_t address,
                               const std::uint8_t* bytes, int count, std::uint16_t wordBytes,
                               bool lineEnd) {
    const int countField = count + pFormat.CountExtra;
    int sum = countField + (address >> 8) + (address & 0xFF);
    for (int i = 0; i < count; ++i) sum += bytes[i];
    const auto checksum = static_cast<std::uint32_t>(pFormat.OnesComplement ? ~sum : -sum);

    // The record is written in place, the data one piece per stretch of
    // bytes of the same kind (from bytes or from words), each its colour.
    ColouredLine line(pText, mark.size() + 2 + 4 + pFormat.Type.size() + 2 * count + 2 +
                                 (lineEnd ? LineEnd.size() : 0));
    line.Put(mark, MarkInk);
    WriteHexDigits(line.Take(2, CountInk), static_cast<std::uint32_t>(countField), 2);
    WriteHexDigits(line.Take(4, AddressInk), address, 4);
    line.Put(pFormat.Type, TypeInk);
    const auto all = static_cast<std::uint16_t>((1u << count) - 1);
    for (int first = 0; first < count;) {
        const bool fromWord = (wordBytes >> first & 1) != 0;
        // The stretch ends at the first later byte of the other kind.
        const unsigned otherKind = (fromWord ? ~wordBytes : wordBytes) & all & (~0u << first);
        const int end = otherKind == 0 ? count : std::countr_zero(otherKind);
        char* out =
            line.Take(2 * static_cast<std::size_t>(end - first), fromWord ? WordInk : ByteInk);
        for (; first < end; ++first) out = WriteHexByte(out, bytes[first]);
    }
    WriteHexDigits(line.Take(2, ChecksumInk), checksum & 0xFF, 2);
    if (lineEnd) line.Put(LineEnd, AddressInk);
}

void RecordWriter::Finish(std::uint16_t startAddress) {
    if (!pEnabled) return;
    if (!pOpen) Open();
    Close();
    WriteRecord(pFormat.EndMark, startAddress, nullptr, 0, 0, false);
}

void RecordWriter::Clear() {
    pText.Clear();
    pRestart = true;
    pOpen = false;
    pAddress = 0;
    pCount = 0;
    pWordBytes = 0;
}

} // namespace trident
