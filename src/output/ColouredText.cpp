#include "output/ColouredText.h"

#include <cstring>

namespace trident {

void ColouredText::Append(std::span<const Piece> pieces) {
    if (pKeepsColours) {
        for (const Piece& piece : pieces) Append(piece.Text, piece.Ink);
        return;
    }
    // Plain text: the text grows once and the pieces are copied into it.
    std::size_t length = 0;
    for (const Piece& piece : pieces) length += piece.Text.size();
    const std::size_t start = pText.size();
    pText.resize(start + length);
    char* out = pText.data() + start;
    for (const Piece& piece : pieces) {
        if (piece.Text.empty()) continue;
        std::memcpy(out, piece.Text.data(), piece.Text.size());
        out += piece.Text.size();
    }
}

void ColouredText::Clear() {
    pText.clear();
    pRuns.clear();
}

} // namespace trident
