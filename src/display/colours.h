#pragma once
// What the displays share about colour: the amplitude colours of the history plot, the age ramp of the map,
// and the channels of a colour value.

#include <array>
#include <cstdint>

#include "common/colour.h"

namespace veltrix {

/// The grey that the map is laid over.
inline constexpr ColourValue GreyBase = Rgb(128, 128, 128);

/// The colours of the amplitudes, index 0 the weakest, 255 the strongest; each channel 0 to 255.
struct AmpColorTable {
    std::array<std::int16_t, 256> AmpRed{};
    std::array<std::int16_t, 256> AmpGreen{};
    std::array<std::int16_t, 256> AmpBlue{};
};

/// The amplitude colours: dark red through orange and yellow to white and a pale blue. Computed once at
/// start.
AmpColorTable BuildAmpColorTable();

/// The colour of a dot `ageDays` days old that is to be seen for `age` minutes: white, yellow, red and at
/// last black, each reached after a third of the time. The sign of `age` counts for nothing, and the ramp is
/// one minute longer than it. A negative age gives white.
ColourValue AgeColor(double ageDays, std::int32_t age);

/// The channels of a colour value, 0 to 255.
int RedOf(ColourValue color);
int GreenOf(ColourValue color);
/// A negative colour value, which only a system colour can be, has the full 255.
int BlueOf(ColourValue color);

/// `value` limited to 0 to 255; it is not rounded.
double ClampByte(double value);

}  // namespace veltrix
