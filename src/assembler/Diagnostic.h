#pragma once

#include "source/SourcePosition.h"

#include <cstddef>
#include <string>

namespace trident {

enum class Severity { Error, Warning };

// One error or warning line that went into the listing.
struct Diagnostic {
    Severity Kind = Severity::Error;
    std::string Message;
    std::string Detail;
    SourcePosition Where;
    // Where its "~" line begins in the listing text.
    std::size_t ListingOffset = 0;
};

} // namespace trident
