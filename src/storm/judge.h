#pragma once
// What stations made of a storm, held against the truth. Nothing here is computed by the station's own
// formulas.

#include <cstddef>
#include <string>
#include <vector>

#include "storm/scenario.h"
#include "storm/station_report.h"

namespace veltrix {

/// What a station of the scenario heard in one run.
struct HeardBy {
    std::size_t station = 0;  ///< place in Scenario::stations
    std::vector<DetectionLine> log;
};

/// What the first station paired with the detections of another one.
struct PairedWith {
    std::size_t station = 0;  ///< place in Scenario::stations
    std::vector<PairLine> pairs;
};

/// All that is judged. Lines written before `from`, or more than 10 s after `to`, are of other runs and are
/// left out.
struct Evidence {
    UtcTime from = 0;            ///< when the stations were started, or later
    UtcTime to = 0;              ///< strikes from here on are not judged
    std::vector<HeardBy> heard;  ///< one entry a station, first the one whose pairs and fixes are given
    std::vector<PairedWith> paired;
    std::vector<ReportedFix> fixes;
};

/// How far fixes lie from their strikes.
struct PositionErrors {
    std::size_t fixes = 0;  ///< that belong to a judged strike
    double median = 0;      ///< km, 0 without fixes
    double most = 0;        ///< km; nine tenths of the fixes are better
};

/// The findings. A line belongs to the strike whose arrival at the station is nearest to the line's sample
/// number, within 5 ms. A strike counts once however many lines belong to it.
struct Judgement {
    /// How well one station heard.
    struct Detected {
        std::string station;
        bool isInStep = true;      ///< false: the strike log fits no strikes, and nothing of it counts
        std::size_t strikes = 0;   ///< of the truth
        std::size_t noStrike = 0;  ///< lines that belong to none
    };
    /// How well the first station paired with another one.
    struct Paired {
        std::string station;
        std::size_t strikes = 0;
        std::size_t wrong = 0;  ///< pairs with a detection of another strike, or with one of none
    };
    /// How well the first station located with another one.
    struct Located {
        std::string station;  ///< the other one
        PositionErrors errors;
    };

    UtcTime from = 0;  ///< of the judged strikes: since all stations listen
    UtcTime to = 0;
    std::size_t strikes = 0;  ///< in the truth
    std::vector<Detected> detected;
    std::vector<Paired> paired;
    std::size_t located = 0;           ///< strikes of the truth that have a fix
    std::size_t noStrike = 0;          ///< fixes that belong to none
    PositionErrors errors;             ///< of all fixes
    std::vector<Located> locatedWith;  ///< the same for each other station, in the order of their first fixes
};

/// `evidence.heard` must not be empty, and hold every station that pairs are given for.
Judgement Judge(const Scenario& scenario, const Evidence& evidence);

/// The findings for people: a line each, with its line feed.
std::string JudgementText(const Judgement& judgement);

}  // namespace veltrix
