#pragma once

namespace trident {

// Which object texts a run builds. Each one is written byte by byte through
// the final pass, so a caller that saves only some of them leaves the others
// out; a text left out stays empty.
struct ObjectTexts {
    bool Srec = true;
    bool Hex = true;
    bool Loader = true;
};

} // namespace trident
