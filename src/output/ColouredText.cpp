#include "output/ColouredText.h"

namespace trident {

void ColouredText::Append(std::span<const Piece> pieces) {
    for (const Piece& piece : pieces) Append(piece.Text, piece.Ink);
}

void ColouredText::Clear() {
    pText.clear();
    pRuns.clear();
}

} // namespace trident
