#pragma once

#include "output/ColouredText.h"
#include "output/LoaderStyle.h"
#include "symbols/Value.h"

#include <cstdint>

namespace trident {

// The program's bytes as the memory-entry commands of a resident monitor,
// one byte a line. A block opens only where the emission address jumps (org,
// reserved space), not at the start of the run: bytes emitted before the
// first org get no opening command.
class LoaderWriter {
  public:
    void SetEnabled(bool enabled) { pEnabled = enabled; }
    void SetStyle(LoaderStyle style) { pStyle = style; }
    LoaderStyle Style() const { return pStyle; }

    // Every pass starts with no block pending: an org of the previous pass
    // opens nothing in this one.
    void StartPass() {
        pRestart = false;
        pAddress = 0;
    }
    void Restart(std::uint16_t address);
    // An emitted value, reduced to its whole bits (WholeBits).
    void WriteBits(std::uint32_t whole, int width);
    void Finish();

    const ColouredText& Text() const { return pText; }
    void KeepColours(bool keep) { pText.KeepColours(keep); }
    void Clear();

  private:
    void WriteByte(std::uint8_t byte, bool fromWord);
    void OpenBlock();

    ColouredText pText;
    LoaderStyle pStyle = LoaderStyle::Ddt;
    bool pEnabled = false;
    bool pRestart = false;
    std::uint16_t pAddress = 0;
};

} // namespace trident
