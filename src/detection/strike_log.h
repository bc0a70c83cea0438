#pragma once
// The station's own record of its strikes: a text file for each day, a line for each detection.

#include <string>
#include <string_view>

#include "common/detection.h"
#include "detection/consumers.h"
#include "platform/clock.h"
#include "platform/error_convention.h"
#include "platform/files.h"

namespace veltrix {

/// One detection as a line of the strike log: date, bearing, sample number, strength and tick time, by
/// commas.
std::string StrikeLogLine(const Detection& detection);

/// Writes and replays the strike log. The file is opened and closed for each line, so that other programs can
/// read it at any time and nothing is lost when the station stops.
class StrikeLog {
  public:
    StrikeLog(Files& files, Clock& clock, ErrorReporter& errors)
        : files_(files), clock_(clock), errors_(errors) {}

    /// Appends one line to "Data\YYYYMMDDN.csv" of the moment of writing. A file that cannot be opened costs
    /// the line, without a word; any other failure is reported. `sRemoteName` is not used.
    void FileUpdate(const Detection& detection, std::string_view sRemoteName);

    /// Rebuilds the history plot from the file of today's date in `folder`, which is where the user has put
    /// it, not the folder of the log. Failures are reported.
    void ReplayTodayLog(std::string_view folder, const AmplitudeLimits& limits, StrikeDisplays& displays);

  private:
    Files& files_;
    Clock& clock_;
    ErrorReporter& errors_;
};

}  // namespace veltrix
