#pragma once

#include "output/RecordWriter.h"

namespace trident {

// Motorola S-records: "S1" records whose count includes the two address
// bytes and the checksum, a ones' complement checksum, no header record and
// an "S9" termination record carrying the start address.
class SrecWriter : public RecordWriter {
  public:
    SrecWriter()
        : RecordWriter({.Mark = "S1",
                        .EndMark = "S9",
                        .CountExtra = 3,
                        .Type = {},
                        .OnesComplement = true}) {}
};

} // namespace trident
