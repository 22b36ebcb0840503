#pragma once

#include "output/RecordText.h"

#include <array>
#include <cstdint>

namespace trident {

// Cuts the emitted bytes into the records of the Intel HEX and Motorola
// S-record texts, which share their shape: records of at most 16 data bytes
// that never cross a 16-byte address boundary, fed one emitted value at a
// time. A record keeps its bytes while open and, when it closes, is written
// once into each text asked for; the record open at the end is closed even
// when empty.
class RecordWriter {
  public:
    // Which texts are written; only the final pass writes.
    void SetEnabled(bool srec, bool hex) {
        pSrecEnabled = srec;
        pHexEnabled = hex;
    }
    // The emission address jumped (start of the run, org, reserved space):
    // the next byte begins a new record at `address`.
    void Restart(std::uint16_t address) {
        pRestart = true;
        pAddress = address;
    }
    // A value from the emitter, reduced to its whole bits (WholeBits): one
    // byte for width 8, two (low byte first) for width 16, whatever byte
    // order the listing shows. Runs for every emitted value.
    void WriteBits(std::uint32_t whole, int width) {
        if (!pSrecEnabled && !pHexEnabled) return;
        if (width == 16) {
            WriteByte(static_cast<std::uint8_t>(whole & 0xFF), true);
            WriteByte(static_cast<std::uint8_t>((whole >> 8) & 0xFF), true);
        } else {
            WriteByte(static_cast<std::uint8_t>(whole & 0xFF), false);
        }
    }
    // The header and end records other tools expect (S0; Intel HEX type 01).
    void SetStandardRecords(bool standard) { pStandard = standard; }
    // At the start of a writing pass: the header records, where asked for.
    void StartText();
    // Closes the open record and writes the end records with the program's
    // start address.
    void Finish(std::uint16_t startAddress);

    const ColouredText& Srec() const { return pSrec.Text(); }
    const ColouredText& Hex() const { return pHex.Text(); }
    void KeepColours(bool keep) {
        pSrec.KeepColours(keep);
        pHex.KeepColours(keep);
    }
    void Clear();

  private:
    static constexpr int RecordSize = 16;

    void WriteByte(std::uint8_t byte, bool fromWord) {
        // A record that holds no byte yet is simply moved to the new address:
        // only the end of the output closes a record empty.
        if (pRestart || !pOpen) Reopen();
        pBytes[static_cast<std::size_t>(pCount)] = byte;
        if (fromWord) pWordBytes |= static_cast<std::uint16_t>(1u << pCount);
        ++pCount;
        ++pAddress;
        if (pAddress % RecordSize == 0) {
            Close();
            Open();
        }
    }
    void Reopen();
    void Open();
    void Close();

    RecordText pSrec{SrecFormat};
    RecordText pHex{IntelHexFormat};
    bool pStandard = false;
    bool pSrecEnabled = false;
    bool pHexEnabled = false;
    bool pRestart = true;
    bool pOpen = false;
    std::uint16_t pAddress = 0;
    std::uint16_t pRecordAddress = 0;
    // The open record's bytes, pCount of them; bit i of pWordBytes is set
    // when byte i came from a word.
    std::array<std::uint8_t, RecordSize> pBytes{};
    std::uint16_t pWordBytes = 0;
    int pCount = 0;
};

} // namespace trident
