#pragma once

#include "symbols/Value.h"

#include <cstdint>
#include <string>

namespace trident {

class Assembly;

// Emits the bytes of one data statement through the run and appends their
// listing text to the statement's: hexadecimal pairs separated by blanks,
// in rows of four bytes; every further row starts on a new line, indented
// by a tab so that it lines up under the first. A line that will not be
// listed gets no text.
class DataBytes {
  public:
    DataBytes(Assembly& run, std::string& text);

    // An 8-bit value; empty (unresolved) emits 0.
    void Byte(const Value& value);
    void Byte(std::uint8_t byte) { Byte(std::uint32_t{byte}); }
    // An 8-bit value already reduced to its whole bits.
    void Byte(std::uint32_t whole);
    // A 16-bit value, low byte first; listed as one group of four digits.
    void Word(const Value& value);

  private:
    // The separator ahead of the next group of digits, on a listed line.
    void Separate(int byteCount);

    Assembly& pRun;
    std::string& pText;
    const bool pListed;
    int pCount = 0;
};

} // namespace trident
