#pragma once
// The history plot: the detections of a day by time and direction, their strength as colour.

#include "common/date_time.h"
#include "display/colours.h"
#include "display/surface.h"
#include "platform/error_convention.h"

namespace veltrix {

/// Adds detections to the history plot. Owned by the form.
class HistoryPlot {
  public:
    explicit HistoryPlot(ErrorReporter& errors) : errors_(errors), colors_(BuildAmpColorTable()) {}

    /// Paints one detection: the hour of `dateTime` to the right, `direction` in degrees modulo 180 downward,
    /// `amplitude` in dB as colour, from the weakest at `minDb` to the strongest at `maxDb`. A strong
    /// detection is not dimmed by a weak one at its place: each channel keeps the greater value. `surface`
    /// has a scale of 24 by 180. Failures are reported.
    void UpdateDisplay(DateTime dateTime, double direction, double amplitude, double minDb, double maxDb,
                       Surface& surface);

  private:
    ErrorReporter& errors_;
    AmpColorTable colors_;
};

}  // namespace veltrix
