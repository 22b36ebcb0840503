#pragma once

#include <string_view>

namespace trident {

// What tells the record formats apart: the marks, what the count field
// counts, the type field and the checksum. Every record, the end record
// included, reads mark, count, address, type, data and checksum.
struct RecordFormat {
    // The leading mark of a data record and of the end record.
    std::string_view Mark;
    std::string_view EndMark;
    // Added to the number of data bytes in the count field (the address and
    // checksum bytes, where the format counts them).
    int CountExtra = 0;
    // Written between the address and the data.
    std::string_view Type;
    // The checksum is the ones' complement of the low byte of the sum of the
    // count, address and data bytes, or else its two's complement.
    bool OnesComplement = false;
    // What other tools expect besides, written on request: a header record
    // in front of the data (its mark; none when empty), and the end record's
    // type when it differs from a data record's.
    std::string_view HeaderMark;
    std::string_view EndType;
};

// Motorola S-records: "S1" records whose count includes the two address
// bytes and the checksum, a ones' complement checksum, no header record and
// an "S9" termination record carrying the start address.
inline constexpr RecordFormat SrecFormat{.Mark = "S1",
                                         .EndMark = "S9",
                                         .CountExtra = 3,
                                         .Type = {},
                                         .OnesComplement = true,
                                         .HeaderMark = "S0",
                                         .EndType = {}};

// Intel HEX: ":" count address "00" data checksum, the checksum being the
// two's complement of the low byte of the sum; a zero-length record of type
// 00 carrying the start address ends the text.
inline constexpr RecordFormat IntelHexFormat{.Mark = ":",
                                             .EndMark = ":",
                                             .CountExtra = 0,
                                             .Type = "00",
                                             .OnesComplement = false,
                                             .HeaderMark = {},
                                             .EndType = "01"};

} // namespace trident
