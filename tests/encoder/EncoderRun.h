#pragma once

#include "assembler/SourceRun.h"
#include "support/RunTool.h"

#include <cstdio>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

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
        char pair[4];
        for (std::int32_t address = 0; address < state.LocationCounter; ++address) {
            std::snprintf(pair, sizeof pair, address ? " %02X" : "%02X",
                          state.ObjectImage[address]);
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

// The mnemonic of every row of the shipped opcode table.
inline std::vector<std::string> ShippedMnemonics() {
    std::istringstream table(ReadWholeFile(TRIDENT_BIN_DIR "/OpTable.def"));
    std::vector<std::string> mnemonics;
    for (std::string row; std::getline(table, row);)
        if (!row.empty()) mnemonics.push_back(row.substr(0, row.find(',')));
    return mnemonics;
}

} // namespace trident::testing
