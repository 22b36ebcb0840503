#pragma once

#include "output/RecordWriter.h"

namespace trident {

// Intel HEX: ":" count address "00" data checksum, the checksum being the
// two's complement of the low byte of the sum; a zero-length record of type
// 00 carrying the start address ends the text.
class IntelHexWriter : public RecordWriter {
  protected:
    std::string_view Mark() const override { return ":"; }
    int CountField(int count) const override { return count; }
    std::string_view TypeField() const override { return "00"; }
    int Checksum(int countField, int sum) const override { return -(countField + sum) & 0xFF; }
    void WriteEndRecord(std::uint16_t startAddress) override;
};

} // namespace trident
