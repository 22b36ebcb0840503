#pragma once

#include "source/RunOptions.h"

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
    // Bytes stored in the image; less than the address span where org or ds
    // leave gaps.
    std::int32_t BytesEmitted = 0;
    // Lines read from every source (for the limit of lines in one pass).
    std::int32_t LinesRead = 0;
    std::int32_t FilesOpened = 0;
    // Errors on statements whose word is a Zilog mnemonic while the
    // notation is 8080, and how many of those found no such operation: a
    // source in Zilog notation assembled without it.
    std::int32_t ZilogWordErrors = 0;
    std::int32_t UnknownZilogWords = 0;
    // The mnemonics of the era's Z80 library are built in from its maclib
    // line on (encoder/EraZ80Library.h).
    bool EraZ80Library = false;
};

// The counters and flags of one assembly, shared by every stage of a
// statement's handling. Files, tables and texts live beside it in Assembly.
struct RunState : PassState {
    static constexpr std::int32_t ImageSize = 0x10000;
    static constexpr std::int32_t NothingEmitted = 65535;

    std::int32_t HighestPass = 0;
    // What the run has read so far, against its budget (RunOptions).
    std::int64_t LinesReadInRun = 0;
    std::int64_t ExpandedTextInRun = 0;
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
    // The era's Z80 library was asked for and its file not found (pass 1
    // reads libraries); Compatible mode then supplies its mnemonics.
    bool EraZ80LibraryMissing = false;
    // An instruction of the Z80 (Z180) opcode table rows was met in this
    // assembly.
    bool Z80Used = false;
    bool Z180Used = false;

    RunOptions Options;
};

} // namespace trident
