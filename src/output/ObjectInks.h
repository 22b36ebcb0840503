#pragma once

#include "output/Colour.h"

#include <string_view>

namespace trident::ObjectInks {

// The colours the object texts share: record marks and loader commands in
// green, addresses in black, bytes of byte values in dark blue and bytes of
// words in blue, so that a word stands out in every view alike.
inline constexpr Colour Command{0, 128, 0};
inline constexpr Colour Address{0, 0, 0};
inline constexpr Colour Byte{0, 0, 160};
inline constexpr Colour Word{0, 0, 255};

// Every line of an object text ends so, whatever the host.
inline constexpr std::string_view LineEnd = "\r\n";

} // namespace trident::ObjectInks
