#include "output/RecordWriter.h"

#include "output/HexText.h"

namespace trident {

void RecordWriter::Restart(std::uint16_t address) {
    pRestart = true;
    pAddress = address;
}

void RecordWriter::WriteBits(std::uint32_t whole, int width) {
    if (!pEnabled) return;
    if (width == 16) {
        WriteByte(static_cast<std::uint8_t>(whole & 0xFF), true);
        WriteByte(static_cast<std::uint8_t>((whole >> 8) & 0xFF), true);
    } else {
        WriteByte(static_cast<std::uint8_t>(whole & 0xFF), false);
    }
}

void RecordWriter::WriteByte(std::uint8_t byte, bool fromWord) {
    // A record that holds no byte yet is simply moved to the new address:
    // only the end of the output closes a record empty.
    if (pRestart || !pOpen) {
        if (pOpen && pCount > 0) Close();
        Open();
    } else if (pAddress % RecordSize == 0 && pCount > 0) {
        Close();
        Open();
    }
    pRecord[pCount++] = {byte, fromWord};
    ++pAddress;
    if (pAddress % RecordSize == 0) {
        Close();
        Open();
    }
}

void RecordWriter::Open() {
    pOpen = true;
    pRestart = false;
    pRecordAddress = pAddress;
    pCount = 0;
}

void RecordWriter::Close() {
    const int countField = CountField(pCount);
    int sum = (pRecordAddress >> 8) + (pRecordAddress & 0xFF);
    for (int i = 0; i < pCount; ++i) sum += pRecord[i].Byte;
    const FixedHex<2> count(static_cast<std::uint32_t>(countField));
    const FixedHex<4> address(pRecordAddress);
    const FixedHex<2> checksum(static_cast<std::uint32_t>(Checksum(countField, sum)));

    // The whole record goes in as one append: the data one piece per stretch
    // of bytes of the same kind (from bytes or from words), each stretch one
    // colour.
    std::array<char, 2 * RecordSize> data;
    std::array<ColouredText::Piece, RecordSize + 6> pieces;
    std::size_t used = 0;
    pieces[used++] = {Mark(), MarkInk};
    pieces[used++] = {count, CountInk};
    pieces[used++] = {address, AddressInk};
    pieces[used++] = {TypeField(), TypeInk};
    int stretchStart = 0;
    for (int i = 0; i < pCount; ++i) {
        data[2 * i] = HexDigits[pRecord[i].Byte >> 4];
        data[2 * i + 1] = HexDigits[pRecord[i].Byte & 0xF];
        if (i + 1 == pCount || pRecord[i + 1].FromWord != pRecord[i].FromWord) {
            pieces[used++] = {{data.data() + 2 * stretchStart, 2u * (i + 1 - stretchStart)},
                              pRecord[i].FromWord ? WordInk : ByteInk};
            stretchStart = i + 1;
        }
    }
    pieces[used++] = {checksum, ChecksumInk};
    pieces[used++] = {"\r\n", AddressInk};
    pText.Append(std::span(pieces.data(), used));
    pOpen = false;
    pCount = 0;
}

void RecordWriter::Finish(std::uint16_t startAddress) {
    if (!pEnabled) return;
    if (!pOpen) Open();
    Close();
    WriteEndRecord(startAddress);
}

void RecordWriter::Clear() {
    pText.Clear();
    pRestart = true;
    pOpen = false;
    pAddress = 0;
    pCount = 0;
}

} // namespace trident
