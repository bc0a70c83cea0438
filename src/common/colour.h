#pragma once
// Colour values as all parts of the system pass them.

#include <cstdint>

namespace veltrix {

/// A colour: red in the low byte, then green, then blue.
using ColourValue = std::int32_t;

/// The colour value of three channels, each 0 to 255: red + 256 green + 65536 blue.
constexpr ColourValue Rgb(int red, int green, int blue) {
    return red + 256 * green + 65536 * blue;
}

/// The colours that the displays and marks draw with.
inline constexpr ColourValue Black = Rgb(0, 0, 0);
inline constexpr ColourValue Red = Rgb(255, 0, 0);
inline constexpr ColourValue Green = Rgb(0, 255, 0);
inline constexpr ColourValue White = Rgb(255, 255, 255);
inline constexpr ColourValue Yellow = Rgb(255, 255, 0);
inline constexpr ColourValue Cyan = Rgb(0, 255, 255);

}  // namespace veltrix
