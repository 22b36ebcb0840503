#pragma once

#include "output/RecordWriter.h"

namespace trident {

// Intel HEX: ":" count address "00" data checksum, the checksum being the
// two's complement of the low byte of the sum; a zero-length record of type
// 00 carrying the start address ends the text.
class IntelHexWriter : public RecordWriter {
  public:
    IntelHexWriter()
        : RecordWriter({.Mark = ":",
                        .EndMark = ":",
                        .CountExtra = 0,
                        .Type = "00",
                        .OnesComplement = false}) {}
};

} // namespace trident
