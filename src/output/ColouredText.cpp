#include "output/ColouredText.h"

#include "output/ColouredLine.h"

namespace trident {

void ColouredText::Append(std::span<const Piece> pieces) {
    std::size_t length = 0;
    for (const Piece& piece : pieces) length += piece.Text.size();
    ColouredLine line(*this, length);
    for (const Piece& piece : pieces) line.Put(piece.Text, piece.Ink);
}

void ColouredText::Clear() {
    pText.clear();
    pRuns.clear();
}

} // namespace trident
