#pragma once

#include "output/LoaderStyle.h"
#include "output/ObjectTexts.h"

#include <cstdint>
#include <string>

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
    // The most lines that macro and repeat expansions may deliver in one
    // pass: nested repeats with large counts, written by mistake, would
    // otherwise run for hours and list without end. Passing it fails the run.
    std::int32_t MaxExpandedLines = 10'000'000;
};

} // namespace trident
