#include "display/history_plot.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "common/arithmetic.h"

namespace veltrix {

namespace {

/// Index into the amplitude colours, 0 to 255. One limit for both gives the strongest colour.
std::size_t ColorIndex(double amplitude, std::int16_t a, std::int16_t b) {
    if (a == b) return 255;
    const double i = (amplitude - a) * 255 / (b - a);
    return static_cast<std::size_t>(RoundToInteger(std::clamp(i, 0.0, 255.0)));
}

}  // namespace

void HistoryPlot::UpdateDisplay(DateTime dateTime, double direction, double amplitude, double minDb,
                                double maxDb, Surface& surface) {
    UnderErrorConvention(errors_, "UpdateDisplay", [&] {
        const std::size_t i = ColorIndex(amplitude, RoundToInteger(minDb), RoundToInteger(maxDb));
        const double x = (dateTime - IntegerPart(dateTime)) * 24;
        const double y = direction >= 180 ? direction - 180 : direction;
        const ColourValue there = surface.Point(x, y);
        surface.PSet(x, y,
                     Rgb(std::max<int>(RedOf(there), colors_.AmpRed[i]),
                         std::max<int>(GreenOf(there), colors_.AmpGreen[i]),
                         std::max<int>(BlueOf(there), colors_.AmpBlue[i])));
    });
}

}  // namespace veltrix
