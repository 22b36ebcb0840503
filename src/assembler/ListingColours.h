#pragma once

#include "output/Colour.h"

namespace trident::ListingColours {

inline constexpr Colour Plain{0, 0, 0};
inline constexpr Colour Bytes{128, 64, 0};
inline constexpr Colour Equates{128, 128, 128};
inline constexpr Colour MacroDefinition{64, 64, 192};
inline constexpr Colour MacroCall{192, 0, 255};
inline constexpr Colour Directive{64, 0, 255};
inline constexpr Colour Comment{255, 128, 0};
inline constexpr Colour Conditional{0, 128, 0};
inline constexpr Colour Z180Instruction{0, 0, 255};
inline constexpr Colour Z80Instruction{128, 0, 255};
inline constexpr Colour Spare{0, 192, 0};
inline constexpr Colour Error{200, 0, 0};
inline constexpr Colour Warning{200, 200, 0};
// The warning count is drawn in the warning colour's packed value halved:
// a darker yellow that stays readable on white.
inline constexpr Colour WarningCount{100, 100, 0};

} // namespace trident::ListingColours
