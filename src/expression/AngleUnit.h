#pragma once

namespace trident {

// Angle unit of the trigonometric functions and of their inverses.
enum class AngleUnit { Degrees, Radians };

} // namespace trident
