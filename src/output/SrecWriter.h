#pragma once

#include "output/RecordWriter.h"

namespace trident {

// Motorola S-records: "S1" records whose count includes the two address
// bytes and the checksum, a ones' complement checksum, no header record and
// an "S9" termination record carrying the start address.
class SrecWriter : public RecordWriter {
  protected:
    std::string_view Mark() const override { return "S1"; }
    int CountField(int count) const override { return count + 3; }
    int Checksum(int countField, int sum) const override { return ~(countField + sum) & 0xFF; }
    void WriteEndRecord(std::uint16_t startAddress) override;
};

} // namespace trident
