#pragma once

#include "assembler/SourceRun.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace trident::testing {

// A source run with the shipped opcode table, and the bytes it emitted.
class EncoderRun : public SourceRun {
  public:
    explicit EncoderRun(std::string_view table = TRIDENT_BIN_DIR "/OpTable.def") {
        Options().OpcodeTableFile = std::string(table);
    }

    // The object image from address 0 to the final location counter, as
    // upper-case hexadecimal pairs separated by blanks.
    std::string Bytes() {
        const RunState& state = Run().State();
        std::string text;
        for (std::int32_t address = 0; address < state.LocationCounter; ++address) {
            char pair[4];
            std::snprintf(pair, sizeof pair, "%02X", state.ObjectImage[address]);
            if (!text.empty()) text += ' ';
            text += pair;
        }
        return text;
    }

    // Assembles with every processor warning silenced.
    std::string QuietBytes(std::string_view source) {
        Options().Z80 = true;
        Options().Z180 = true;
        Assemble(source);
        return Bytes();
    }
};

} // namespace trident::testing
