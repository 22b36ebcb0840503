#pragma once

#include "output/ColouredText.h"
#include "symbols/Value.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace trident {

// The common shape of the Intel HEX and Motorola S-record texts: records of
// at most 16 data bytes that never cross a 16-byte address boundary, fed one
// emitted value at a time. A record is written out when it closes, with its
// count and checksum; the record open at the end is closed even when empty.
class RecordWriter {
  public:
    virtual ~RecordWriter() = default;

    // Only the final pass writes; earlier passes leave the text alone.
    void SetEnabled(bool enabled) { pEnabled = enabled; }
    // The emission address jumped (start of the run, org, reserved space):
    // the next byte begins a new record at `address`.
    void Restart(std::uint16_t address);
    // A value from the emitter, reduced to its whole bits (WholeBits): one
    // byte for width 8, two (low byte first) for width 16, whatever byte
    // order the listing shows.
    void WriteBits(std::uint32_t whole, int width);
    // Closes the open record and writes the end record with the program's
    // start address. No line break follows the end record.
    void Finish(std::uint16_t startAddress);

    const ColouredText& Text() const { return pText; }
    void KeepColours(bool keep) { pText.KeepColours(keep); }
    void Clear();

  protected:
    static constexpr Colour MarkInk{0, 128, 0};
    static constexpr Colour CountInk{0, 160, 160};
    static constexpr Colour AddressInk{0, 0, 0};
    static constexpr Colour TypeInk{160, 0, 0};
    static constexpr Colour ByteInk{0, 0, 160};
    static constexpr Colour WordInk{0, 0, 255};
    static constexpr Colour ChecksumInk{160, 0, 0};

    // The record's leading mark ("S1", ":").
    virtual std::string_view Mark() const = 0;
    // The count field of a record holding `count` data bytes.
    virtual int CountField(int count) const = 0;
    // Text written between the address and the data ("00" for a type field).
    virtual std::string_view TypeField() const { return {}; }
    // The checksum of a record whose count field and address plus data sum
    // are given.
    virtual int Checksum(int countField, int sum) const = 0;
    virtual void WriteEndRecord(std::uint16_t startAddress) = 0;

    ColouredText& Ink() { return pText; }

  private:
    static constexpr int RecordSize = 16;

    struct PendingByte {
        std::uint8_t Byte;
        bool FromWord;
    };

    void WriteByte(std::uint8_t byte, bool fromWord);
    void Open();
    void Close();

    ColouredText pText;
    bool pEnabled = false;
    bool pRestart = true;
    bool pOpen = false;
    std::uint16_t pAddress = 0;
    std::uint16_t pRecordAddress = 0;
    // The open record's bytes, pCount of them.
    std::array<PendingByte, RecordSize> pRecord{};
    int pCount = 0;
};

} // namespace trident
