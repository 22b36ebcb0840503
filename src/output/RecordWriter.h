#pragma once

#include "output/ColouredText.h"
#include "output/RecordFormat.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace trident {

// The common shape of the Intel HEX and Motorola S-record texts (the format
// tells them apart): records of at most 16 data bytes that never cross a
// 16-byte address boundary, fed one emitted value at a time. A record keeps
// its bytes while open and is formatted once, with its count and checksum,
// when it closes; the record open at the end is closed even when empty.
class RecordWriter {
  public:
    explicit RecordWriter(const RecordFormat& format) : pFormat(format) {}

    // Only the final pass writes; earlier passes leave the text alone.
    void SetEnabled(bool enabled) { pEnabled = enabled; }
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
        if (!pEnabled) return;
        if (width == 16) {
            WriteByte(static_cast<std::uint8_t>(whole & 0xFF), true);
            WriteByte(static_cast<std::uint8_t>((whole >> 8) & 0xFF), true);
        } else {
            WriteByte(static_cast<std::uint8_t>(whole & 0xFF), false);
        }
    }
    // Closes the open record and writes the end record with the program's
    // start address. No line break follows the end record.
    void Finish(std::uint16_t startAddress);

    const ColouredText& Text() const { return pText; }
    void KeepColours(bool keep) { pText.KeepColours(keep); }
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
    // One record of `count` bytes from `bytes` (bit i of `wordBytes` marks
    // byte i as part of a word), with or without the line end.
    void WriteRecord(std::string_view mark, std::uint16_t address, const std::uint8_t* bytes,
                     int count, std::uint16_t wordBytes, bool lineEnd);

    RecordFormat pFormat;
    ColouredText pText;
    bool pEnabled = false;
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
