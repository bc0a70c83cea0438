#include "archive/day_plots.h"

#include "common/neutral_text.h"
#include "display/captions.h"

namespace veltrix {

namespace {

constexpr double GoodFit = 10.0;  // percent; poorer pulses stay out of the history plot
constexpr SurfaceScale HoursByDegrees{0, 0, 24, 180};

}  // namespace

Surface& DayPlots::SurfaceOf(DateTime date) {
    const auto [day, isNew] =
        days_.try_emplace(FormatDate(date, "YYYYMMDD"), Side, Side, glyphs_, HoursByDegrees);
    if (isNew) DrawDateCaption(day->second, date);
    return day->second;
}

void DayPlots::Take(const HeardPulse& heard) {
    if (!(heard.pulse.dFitError < GoodFit)) return;
    plot_.UpdateDisplay(heard.date, heard.pulse.dDir, heard.pulse.dAmp, limits_.least, limits_.most,
                        SurfaceOf(heard.date));
}

}  // namespace veltrix
