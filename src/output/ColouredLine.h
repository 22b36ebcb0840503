#pragma once

#include "output/ColouredText.h"

#include <cassert>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace trident {

// Stores `text` at `out` and returns the end. The fields of listing lines
// and reports are mostly a few characters long: they are moved in at most
// two overlapping word stores rather than through a library call each; only
// longer ones (comments) go through memcpy.
inline char* CopyText(char* out, std::string_view text) {
    const char* const from = text.data();
    const std::size_t length = text.size();
    if (length >= 8) {
        if (length > 16) {
            std::memcpy(out, from, length);
        } else {
            std::memcpy(out, from, 8);
            std::memcpy(out + length - 8, from + length - 8, 8);
        }
    } else if (length >= 4) {
        std::memcpy(out, from, 4);
        std::memcpy(out + length - 4, from + length - 4, 4);
    } else if (length > 0) {
        out[0] = from[0];
        out[length / 2] = from[length / 2];
        out[length - 1] = from[length - 1];
    }
    return out + length;
}

// One line or record written straight into a ColouredText: the text grows
// once by the line's length, known beforehand, and every piece is stored in
// place and painted only when the text keeps colours. The listing writes
// one of these for every statement of the final pass, and the object texts
// one for every record.
class ColouredLine {
  public:
    ColouredLine(ColouredText& text, std::size_t length)
        : pText(text), pStart(text.Size()), pBegin(text.Grow(length)), pOut(pBegin),
          pEnd(pBegin + length), pPaints(text.KeepsColours()) {}
    ~ColouredLine() { assert(Full() && "a line fills exactly the room it asked for"); }
    ColouredLine(const ColouredLine&) = delete;
    ColouredLine& operator=(const ColouredLine&) = delete;

    void Put(std::string_view piece, Colour ink) {
        Paint(piece.size(), ink);
        pOut = CopyText(pOut, piece);
    }
    void Put(char c, Colour ink) {
        Paint(1, ink);
        *pOut++ = c;
    }
    // The next `count` characters, for the caller to write in place (digits).
    char* Take(std::size_t count, Colour ink) {
        Paint(count, ink);
        char* const at = pOut;
        pOut += count;
        return at;
    }
    bool Full() const { return pOut == pEnd; }

  private:
    void Paint(std::size_t length, Colour ink) {
        if (pPaints) pText.Paint(pStart + static_cast<std::size_t>(pOut - pBegin), length, ink);
    }

    ColouredText& pText;
    std::size_t pStart;
    char* pBegin;
    char* pOut;
    char* pEnd;
    bool pPaints;
};

} // namespace trident
