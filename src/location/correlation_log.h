#pragma once
// The log of accepted pairs.

#include <string>

#include "platform/clock.h"
#include "platform/files.h"

namespace veltrix {

/// One accepted pair as it is logged.
struct CorrelatedPair {
    double dDirLocal = 0;  ///< corrected bearings, degrees
    double dDirRemote = 0;
    double dDiffTime = 0;    ///< local less remote time, ms
    double lmY = 0;          ///< median of the accepted differences, ms
    double dTravelTime = 0;  ///< difference of the times of travel, ms
    double dLocalTime = 0;   ///< as the stations counted them: samples, or milliseconds in real-time mode
    double dRemoteTime = 0;
};

/// Appends the line of a pair to "Data\Corr_YYYYMMDD <name>.csv", a file for each day and station. No handle
/// is held between calls. Raises what Files raises.
void LogPair(Files& files, Clock& clock, const std::string& sLocalName, const CorrelatedPair& pair);

}  // namespace veltrix
