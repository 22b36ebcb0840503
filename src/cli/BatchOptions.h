#pragma once

#include "source/RunOptions.h"

#include <string>

namespace trident {

// What the command line asked for. An empty file name means "not asked for".
struct BatchOptions {
    std::string Source;
    std::string ListingFile;
    std::string HexFile;
    std::string SrecFile;
    std::string LoaderFile;
    std::string BinaryFile;
    std::string SymbolsFile;
    // A make rule naming the outputs and every file the run read.
    std::string DepFile;
    // Object outputs are written even when the run reported errors or stopped.
    bool KeepOutputs = false;
    // Text outputs as rich text that keeps the views' colours.
    bool Rtf = false;
    // Only diagnostics on the terminal, no summary line.
    bool Quiet = false;
    RunOptions Run;

    bool AnyObjectRequested() const {
        return !HexFile.empty() || !SrecFile.empty() || !LoaderFile.empty() ||
               !BinaryFile.empty() || !SymbolsFile.empty() || !DepFile.empty();
    }
    bool AnyOutputRequested() const {
        return !ListingFile.empty() || !HexFile.empty() || !SrecFile.empty() ||
               !LoaderFile.empty() || !BinaryFile.empty() || !SymbolsFile.empty();
    }
};

} // namespace trident
