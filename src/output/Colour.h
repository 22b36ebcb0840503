#pragma once

#include <cstdint>

namespace trident {

// A text colour of the views, as red, green and blue components.
struct Colour {
    std::uint8_t Red = 0;
    std::uint8_t Green = 0;
    std::uint8_t Blue = 0;

    friend constexpr bool operator==(const Colour&, const Colour&) = default;
};

} // namespace trident
