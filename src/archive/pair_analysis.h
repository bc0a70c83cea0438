#pragma once
// Located strikes from the recordings of two stations.

#include <string>
#include <vector>

#include "archive/clock_offset.h"
#include "archive/pair_site.h"
#include "archive/station_replay.h"

namespace veltrix {

/// One station, and all that was heard in its recordings.
struct StationRecord {
    std::string name;
    SitePlace place;
    double correction = 0;  ///< added to its bearings, degrees
    DateTime start = 0;     ///< of its stream
    std::vector<HeardPulse> pulses;
};

/// What a station's user could set.
struct PairRules {
    double mapRadius = 2000;        ///< km around the first station; strikes beyond are left out
    double angularSeparation = 10;  ///< least angle at which the bearings cross, degrees
    std::int16_t minStrength = 80;  ///< dB below 0
    bool toaFilter = false;
    bool tables = false;  ///< use the stations' calibration tables
};

/// A strike that was located.
struct LocatedPair {
    HeardPulse first;   ///< at the first station
    HeardPulse second;  ///< at the second one; its date is by that station's clock
    double latitude = 0;
    double longitude = 0;     ///< -180 to 180
    double firstBearing = 0;  ///< with all corrections, degrees, 0 to 360
    double secondBearing = 0;
    double firstDistance = 0;  ///< km
    double secondDistance = 0;
    double deltaT = 0;    ///< ms that the first station heard it later, less what its clock is ahead
    double toaError = 0;  ///< ms by which that misses what the position says
};

/// What two recordings have in common.
struct PairFindings {
    /// In the order in which the first station heard them.
    std::vector<LocatedPair> strikes;
    long pairs = 0;  ///< detections taken for the same stroke
    /// Of the spans of recording that both stations have: their offsets, in the order of time.
    std::vector<ClockOffset> offsets;
    int withoutOffset = 0;  ///< spans in which too little was heard in common
};

/// Pairs and locates as the first station would have done with the second as its only peer.
///
/// The clocks of recordings may be two minutes apart, and their sample clocks some hundred ppm. So the pulses
/// of both are first put on one time line, then offered in its order, with the drift rate set. The correlator
/// learns the rest from the first pairs; once it knows, all is offered again from the start, so that the
/// first strikes are located, too. Gaps of either station begin anew. `files` holds the calibration tables.
PairFindings LocatePairs(const StationRecord& first, const StationRecord& second, const PairRules& rules,
                         Files& files);

}  // namespace veltrix
