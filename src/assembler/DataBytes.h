#pragma once

#include "symbols/Value.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace trident {

class Assembly;

// Emits the bytes of one data statement through the run and builds their
// listing text: hexadecimal pairs separated by blanks, in rows of four bytes;
// every further row starts on a new line, indented by a tab so that it lines
// up under the first.
class DataBytes {
  public:
    explicit DataBytes(Assembly& run) : pRun(run) {}

    // An 8-bit value; empty (unresolved) emits 0.
    void Byte(const Value& value);
    void Byte(std::uint8_t byte) { Byte(std::uint32_t{byte}); }
    // An 8-bit value already reduced to its whole bits.
    void Byte(std::uint32_t whole);
    // A 16-bit value, low byte first; listed as one group of four digits.
    void Word(const Value& value);

    const std::string& Text() const { return pText; }

  private:
    void Append(std::string_view digits, int byteCount);

    Assembly& pRun;
    std::string pText;
    std::string pDigits;
    int pCount = 0;
};

} // namespace trident
