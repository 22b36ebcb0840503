#include "output/RecordWriter.h"

#include "output/HexText.h"

#include <cmath>
#include <cstdio>

namespace trident {

std::string RecordWriter::Hex2(int value) {
    return HexText(static_cast<unsigned>(value) & 0xFF, 2);
}

std::string RecordWriter::Hex4(int value) {
    return HexText(static_cast<unsigned>(value) & 0xFFFF, 4);
}

void RecordWriter::Restart(std::uint16_t address) {
    pRestart = true;
    pAddress = address;
}

void RecordWriter::WriteValue(const Value& value, int width) {
    WriteBits(WholeBits(value), width);
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
        if (pOpen && !pRecord.empty()) Close();
        Open();
    } else if (pAddress % 16 == 0 && !pRecord.empty()) {
        Close();
        Open();
    }
    pRecord.push_back({byte, fromWord});
    ++pAddress;
    if (pAddress % 16 == 0) {
        Close();
        Open();
    }
}

void RecordWriter::Open() {
    pOpen = true;
    pRestart = false;
    pRecordAddress = pAddress;
    pRecord.clear();
}

void RecordWriter::Close() {
    const int count = static_cast<int>(pRecord.size());
    const int countField = CountField(count);
    int sum = (pRecordAddress >> 8) + (pRecordAddress & 0xFF);
    pText.Append(Mark(), MarkInk);
    pText.Append(Hex2(countField), CountInk);
    pText.Append(Hex4(pRecordAddress), AddressInk);
    pText.Append(TypeField(), TypeInk);
    // The data in one piece per stretch of bytes of the same kind (from
    // bytes or from words), each stretch one colour.
    std::string& data = pDataBuffer;
    data.clear();
    std::size_t stretchStart = 0;
    for (std::size_t i = 0; i < pRecord.size(); ++i) {
        const bool kindChanges = i > 0 && pRecord[i].FromWord != pRecord[i - 1].FromWord;
        if (kindChanges) {
            pText.Append(std::string_view(data).substr(stretchStart),
                         pRecord[i - 1].FromWord ? WordInk : ByteInk);
            stretchStart = data.size();
        }
        AppendHex(data, pRecord[i].Byte, 2);
        sum += pRecord[i].Byte;
    }
    if (!pRecord.empty())
        pText.Append(std::string_view(data).substr(stretchStart),
                     pRecord.back().FromWord ? WordInk : ByteInk);
    pText.Append(Hex2(Checksum(countField, sum)), ChecksumInk);
    pText.Append("\r\n", AddressInk);
    pOpen = false;
    pRecord.clear();
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
    pRecord.clear();
}

} // namespace trident
