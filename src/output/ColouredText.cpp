#include "output/ColouredText.h"

namespace trident {

void ColouredText::Append(std::string_view text, Colour ink) {
    if (text.empty()) return;
    if (!pRuns.empty() && pRuns.back().Ink == ink &&
        pRuns.back().Start + pRuns.back().Length == pText.size()) {
        pRuns.back().Length += static_cast<std::uint32_t>(text.size());
    } else {
        pRuns.push_back(Run{static_cast<std::uint32_t>(pText.size()),
                            static_cast<std::uint32_t>(text.size()), ink});
    }
    pText.append(text);
}

void ColouredText::Clear() {
    pText.clear();
    pRuns.clear();
}

} // namespace trident
