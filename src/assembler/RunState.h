#pragma once

#include "assembler/RunOptions.h"

#include <array>
#include <cstdint>

namespace trident {

enum class ExpansionLines : std::uint8_t { All, None, CodeOnly };

// What a pass starts afresh: every pass begins with `PassState{}`.
struct PassState {
    std::int16_t CurrentPass = 0;
    bool AnotherPassNeeded = false;
    bool EndSeen = false;
    // The list / nolist switch; on at the start of every pass.
    bool ListingOn = true;
    // A false condition is skipping lines.
    bool Skipping = false;
    std::int32_t LocationCounter = 0;
    // Between .phase and .dephase: where the bytes really go, less the
    // location counter that labels and "$" count.
    std::int32_t PhaseOffset = 0;
    // Inside a .comment block: the character that ends it.
    char CommentDelimiter = 0;
    // .lall, .sall, .xall: which lines of macro expansions are listed, as
    // far as the listing options list expansions at all.
    ExpansionLines ListedExpansionLines = ExpansionLines::All;
    // The program's start address, from the operand of end.
    std::uint16_t StartAddress = 0;
    std::int32_t LinesReadFromFile = 0;
    std::int32_t IncludedLines = 0;
    std::int32_t ExpandedMacroLines = 0;
    std::int32_t TotalLines = 0;
};

// The counters and flags of one assembly, shared by every stage of a
// statement's handling. Files, tables and texts live beside it in Assembly.
struct RunState : PassState {
    static constexpr std::int32_t ImageSize = 0x10000;
    static constexpr std::int32_t NothingEmitted = 65535;

    std::int32_t HighestPass = 0;
    bool StopRequested = false;
    // A value that had to be known now was not: the assembly ends.
    bool TerminalStop = false;
    bool ListThisLine = false;
    // Instruction statements are read in Zilog notation: the option's choice
    // at the start of every pass, then as .zilog and .intel switch it.
    bool ZilogNotation = false;

    std::int32_t LineAddress = 0;
    std::array<std::uint8_t, ImageSize> ObjectImage{};
    std::int32_t LowestAddress = NothingEmitted;
    std::int32_t HighestAddress = 0;

    std::int32_t ErrorCount = 0;
    std::int32_t WarningCount = 0;
    std::int32_t MaclibLinesRead = 0;
    std::int32_t IncludeDepth = 0;
    bool MaclibOpen = false;
    // An instruction of the Z80 (Z180) opcode table rows was met in this
    // assembly.
    bool Z80Used = false;
    bool Z180Used = false;

    RunOptions Options;
};

} // namespace trident
