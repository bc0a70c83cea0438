#pragma once
// The history plots of the days of a recording, as the station would have drawn them.

#include <cstdint>
#include <map>
#include <string>

#include "archive/station_replay.h"
#include "display/history_plot.h"

namespace veltrix {

/// One plot for each day that has a strike, or else of the first one. REQUIRES that reporter and glyphs
/// outlive it.
class DayPlots {
  public:
    static constexpr int Side = 557;  ///< pixels

    /// The limits of the colours in dB, as the station's boxes set them.
    struct Limits {
        std::int16_t least = -100;
        std::int16_t most = 0;
    };

    DayPlots(const Limits& limits, ErrorReporter& errors, Glyphs& glyphs)
        : limits_(limits), glyphs_(glyphs), plot_(errors) {}

    /// Adds a pulse to its day, if its fit is as good as the station asks for.
    void Take(const HeardPulse& heard);
    /// Makes sure of a plot of that day.
    void AddDay(DateTime date) { SurfaceOf(date); }

    /// The plots by their days, as "YYYYMMDD".
    const std::map<std::string, Surface>& Days() const { return days_; }

  private:
    Surface& SurfaceOf(DateTime date);

    Limits limits_;
    Glyphs& glyphs_;
    HistoryPlot plot_;
    std::map<std::string, Surface> days_;
};

}  // namespace veltrix
