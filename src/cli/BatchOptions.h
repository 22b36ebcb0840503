#pragma once

#include "assembler/RunOptions.h"

#include <string>

namespace trident {

// What the command line asked for.
struct BatchOptions {
    std::string Source;
    std::string ListingFile;
    RunOptions Run;
};

} // namespace trident
