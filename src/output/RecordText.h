#pragma once

#include "output/ColouredText.h"
#include "output/RecordFormat.h"

#include <cstdint>
#include <span>

namespace trident {

// The text of one record format: each record the writer closes is written
// here once, in place, with its count and checksum.
class RecordText {
  public:
    explicit RecordText(const RecordFormat& format) : pFormat(format) {}

    // A data record at `address` holding `bytes`; bit i of `wordBytes` marks
    // byte i as part of a word (it is coloured as one).
    void WriteRecord(std::uint16_t address, std::span<const std::uint8_t> bytes,
                     std::uint16_t wordBytes);
    // The end record with the program's start address; no line break follows,
    // unless `standard` asks for the end record other tools expect (Intel
    // HEX: type 01, end of file), which ends its line.
    void WriteEnd(std::uint16_t startAddress, bool standard);
    // The header record other tools expect in front of the data, where the
    // format has one (S-records: S0, no data).
    void WriteHeader();

    const ColouredText& Text() const { return pText; }
    void KeepColours(bool keep) { pText.KeepColours(keep); }
    void Clear() { pText.Clear(); }

  private:
    void Write(std::string_view mark, std::string_view type, std::uint16_t address,
               std::span<const std::uint8_t> bytes, std::uint16_t wordBytes, bool lineEnd);

    RecordFormat pFormat;
    ColouredText pText;
};

} // namespace trident
