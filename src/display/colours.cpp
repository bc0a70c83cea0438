#include "display/colours.h"

#include <algorithm>
#include <cmath>

#include "common/arithmetic.h"

namespace veltrix {

namespace {

/// One channel of the base palette: its weak, middle and strong end.
struct PaletteColumn {
    double weak;
    double middle;
    double strong;
};

constexpr PaletteColumn RedColumn{196, 196, 144};
constexpr PaletteColumn GreenColumn{0, 196, 144};
constexpr PaletteColumn BlueColumn{0, 0, 255};

constexpr int DimmedEntries = 32;

/// The weight of a palette row at a distance of `offset` entries from its centre: all three bells have one
/// width.
double Bell(double offset) {
    const double x = offset * 0.0002 * 64;
    return std::exp(-(x * x));
}

/// `channel` with a row's light added.
std::int16_t Lighten(std::int16_t channel, double light) {
    const double t = channel + light;
    return channel < t ? RoundToInteger(t) : channel;
}

std::int16_t MixedChannel(const PaletteColumn& column, int v) {
    std::int16_t channel = RoundToInteger(ClampByte(column.strong * Bell(v - 255)));
    channel = Lighten(channel, column.middle * Bell(v - 127));
    return Lighten(channel, column.weak * Bell(v));
}

int LimitedByte(double value) {
    return static_cast<int>(ClampByte(RoundTiesToEven(value)));
}

}  // namespace

AmpColorTable BuildAmpColorTable() {
    AmpColorTable table;
    for (int v = 0; v < 256; ++v) {
        const auto i = static_cast<std::size_t>(v);
        std::int16_t& red = table.AmpRed[i];
        std::int16_t& green = table.AmpGreen[i];
        std::int16_t& blue = table.AmpBlue[i];
        red = MixedChannel(RedColumn, v);
        green = MixedChannel(GreenColumn, v);
        blue = MixedChannel(BlueColumn, v);
        // Never 0: the bells overlap, so that every entry has some red.
        const std::int16_t brightest = std::max({red, green, blue});
        for (std::int16_t* channel : {&red, &green, &blue}) {
            *channel = RoundToInteger(*channel * 255.0 / brightest);
            if (v < DimmedEntries) *channel = RoundToInteger(*channel * (32.0 + v) / 64);
        }
    }
    return table;
}

ColourValue AgeColor(double ageDays, std::int32_t age) {
    const double lifetime = std::abs(static_cast<double>(age)) + 1;
    const double s = ageDays * 24 * 60 * 60 / lifetime / 60 * 768;
    if (s >= 768) return Black;
    if (s >= 512) return Rgb(LimitedByte(255 - (s - 512)), 0, 0);
    if (s >= 256) return Rgb(255, LimitedByte(255 - (s - 256)), 0);
    if (s >= 0) return Rgb(255, 255, LimitedByte(255 - s));
    return White;
}

int RedOf(ColourValue color) {
    return color & 255;
}

int GreenOf(ColourValue color) {
    return (color >> 8) & 255;
}

int BlueOf(ColourValue color) {
    // The byte of a negative value is complemented to 24 bits before and after it is cut out. Whatever the
    // byte, that leaves a number far above 255, and the limit decides.
    return color < 0 ? 255 : color >> 16 & 255;
}

double ClampByte(double value) {
    if (value >= 255) return 255;
    return value < 0 ? 0 : value;
}

}  // namespace veltrix
