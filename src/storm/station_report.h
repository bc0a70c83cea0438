#pragma once
// What a station wrote down about a storm: its strike log, its correlation log and the located strikes that
// it printed. docs/files.md describes the lines.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "storm/utc_time.h"

namespace veltrix {

/// One detection: when the station's computer wrote the line, and the sample number of the pulse.
struct DetectionLine {
    UtcTime written = 0;
    double sample = 0;
};

/// Two detections that the station took for the same strike.
struct PairLine : DetectionLine {
    double remoteSample = 0;
};

/// A place that the station found for one of its detections.
struct ReportedFix : DetectionLine {
    double latitude = 0;   ///< degrees
    double longitude = 0;  ///< degrees
    std::string remote;    ///< name of the other station
};

/// A file's content, and its name for messages.
struct ReportText {
    std::string_view content;
    std::string_view name;
};

/// The instant at which the clock of the station's computer shows a local time, which is given as if it were
/// UTC.
using LocalClock = std::function<UtcTime(UtcTime)>;

/// The lines of a strike log. These readers raise InvalidCall with file and line when a line is none.
std::vector<DetectionLine> ReadStrikeLog(const ReportText& text, const LocalClock& clock);
/// The lines of a correlation log. With the realtime clock on, a station writes milliseconds in place of
/// sample numbers, and the lines say nothing here.
std::vector<PairLine> ReadCorrelationLog(const ReportText& text, const LocalClock& clock);
/// The lines "fix ..." of what a station printed; other lines are passed over.
std::vector<ReportedFix> ReadFixes(const ReportText& text, const LocalClock& clock);

}  // namespace veltrix
