#pragma once

#include "output/LoaderStyle.h"
#include "output/ObjectTexts.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace trident {

// The user's choices for a run. A front end may change them between
// statements; the run reads them live.
struct RunOptions {
    bool ListAllPasses = false;
    bool CompatibleMode = false;
    // dw stores a two-character string in text order ('AB' as 41 42), as
    // Altair-era assemblers do, instead of as its value low byte first.
    bool WordStringsInTextOrder = false;
    bool BigEndianCode = false;
    bool ListMacLibs = false;
    bool ListMacroDefinitions = false;
    bool ListMacroExpansions = false;
    bool StripParity = false;
    bool CaseSensitiveSymbols = false;
    // The processor check boxes: checked means that the warnings for that
    // processor's instructions are off.
    bool Z80 = false;
    bool Z180 = false;
    // Instruction statements are written in Zilog notation (ld, jp, ...) from
    // the start of every pass; .zilog and .intel switch it line by line.
    bool ZilogMnemonics = false;
    // The monitor dialect of the loader text.
    LoaderStyle Loader = LoaderStyle::Ddt;
    // The object texts the final pass builds: all of them unless a caller
    // that saves only some (the batch tool) says otherwise.
    ObjectTexts Objects;
    // Whether the listing and the object texts carry their colours: a caller
    // that saves plain text only (the batch tool without --rtf) leaves them
    // out, and the texts are the same.
    bool ColourRuns = true;
    std::string IncludeDirectory;
    std::string MaclibDirectory;
    // The opcode table file read at the start of every assembly. Empty means
    // no table is configured: nothing is loaded, nothing fails, and every
    // operation word is unknown to the instruction encoder.
    std::string OpcodeTableFile;
    // The budget of work one source may cause, whatever it is: a file that
    // includes itself several times over, or a macro that doubles its
    // argument at every level, would otherwise grow without end. Passing one
    // ends the run with an error on the line that passed it.
    // Lines read from all sources together, in one pass and in the run.
    std::int32_t MaxLinesPerPass = 10'000'000;
    std::int64_t MaxLinesPerRun = 20'000'000;
    // Include files and macro libraries opened in one pass.
    std::int32_t MaxFilesOpenedPerPass = 10'000;
    // The length of one line of macro expansion after substitution.
    std::size_t MaxExpandedLineLength = 256 * 1024;
    // The text held by all open expansions together: bodies, arguments and
    // repeat items.
    std::size_t MaxOpenExpansionText = 16 * 1024 * 1024;
    // The characters of all lines of macro expansion in the run.
    std::int64_t MaxExpandedTextPerRun = std::int64_t{128} * 1024 * 1024;
    // Intel HEX ends with a type 01 end-of-file record and S-records start
    // with an S0 header, as other tools expect.
    bool StandardRecords = false;
    // Names defined before the first statement of every pass as by equ:
    // "NAME" (value 1) or "NAME=VALUE".
    std::vector<std::string> Defines;
};

} // namespace trident
