#pragma once
// The end of a day: the finished history plot is kept, and a new one begins.

#include <string>

#include "display/surface.h"
#include "platform/error_convention.h"
#include "platform/platform.h"

namespace veltrix {

/// Watches the date of the computer, also across a restart. Owned by the form.
class DailyRollover {
  public:
    /// `plot` is the history plot.
    DailyRollover(Platform& platform, Surface& plot, ErrorReporter& errors)
        : platform_(platform), plot_(plot), errors_(errors) {}

    /// Runs once a second. When the date is another than the plot's, in either direction, the plot is written
    /// to "picture5yesterday.bmp" and starts again empty, or on the user's template "picture5m.bmp". Failures
    /// are reported.
    void Timer5_Timer();

  private:
    Platform& platform_;
    Surface& plot_;
    ErrorReporter& errors_;
    std::string strDate;      // today, as YYYY-MM-DD
    std::string strPrevDate;  // the day of the plot; empty until it is known
};

}  // namespace veltrix
