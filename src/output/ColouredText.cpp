#include "output/ColouredText.h"

#include "output/ColouredLine.h"

#include <cstring>

namespace trident {

void ColouredText::Append(std::span<const Piece> pieces) {
    std::size_t length = 0;
    for (const Piece& piece : pieces) length += piece.Text.size();
    ColouredLine line(*this, length);
    for (const Piece& piece : pieces) line.Put(piece.Text, piece.Ink);
}

void ColouredText::Reserve(std::size_t size) {
    if (size <= pCapacity) return;
    auto store = std::make_unique_for_overwrite<char[]>(size);
    if (pUsed > 0) std::memcpy(store.get(), pStore.get(), pUsed);
    pStore = std::move(store);
    pCapacity = size;
}

void ColouredText::Clear() {
    pUsed = 0;
    pRuns.clear();
}

} // namespace trident
