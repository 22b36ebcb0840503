#include "output/RecordWriter.h"

namespace trident {

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
    const std::span<const std::uint8_t> bytes(pBytes.data(), static_cast<std::size_t>(pCount));
    if (pSrecEnabled) pSrec.WriteRecord(pRecordAddress, bytes, pWordBytes);
    if (pHexEnabled) pHex.WriteRecord(pRecordAddress, bytes, pWordBytes);
    pOpen = false;
    pCount = 0;
    pWordBytes = 0;
}

void RecordWriter::Finish(std::uint16_t startAddress) {
    if (!pSrecEnabled && !pHexEnabled) return;
    if (!pOpen) Open();
    Close();
    if (pSrecEnabled) pSrec.WriteEnd(startAddress, pStandard);
    if (pHexEnabled) pHex.WriteEnd(startAddress, pStandard);
}

void RecordWriter::StartText() {
    if (!pStandard) return;
    if (pSrecEnabled) pSrec.WriteHeader();
    if (pHexEnabled) pHex.WriteHeader();
}

void RecordWriter::Clear() {
    pSrec.Clear();
    pHex.Clear();
    pRestart = true;
    pOpen = false;
    pAddress = 0;
    pCount = 0;
    pWordBytes = 0;
}

} // namespace trident
