#pragma once

#include "output/ColouredText.h"

#include <string>
#include <string_view>

namespace trident {

// A coloured text as a rich-text document in a fixed-pitch font, so that a
// saved listing keeps its colours in a word processor.
std::string ToRtf(const ColouredText& text, std::string_view fontName = "Courier New",
                  int pointSize = 10);

} // namespace trident
