#pragma once
// What a recording held, in a few lines.

#include <map>
#include <string>

#include "archive/station_replay.h"

namespace veltrix {

/// Counts the pulses of a stream by the hour. Hours are those of the dates of the recordings.
class Summary {
  public:
    /// Counts a pulse.
    void Take(const HeardPulse& heard);
    /// Says that sound was played up to `date`, so that hours without strikes show.
    void HasPlayed(DateTime date) { hours_[HourOf(date - Instant)]; }

    /// The lines, each with its line feed. `seconds` is what the work took.
    std::string Text(const StationReplay& replay, double seconds) const;

  private:
    struct Hour {
        long strikes = 0;
        long clipped = 0;
        double strongest = 0;  ///< dB, when there are strikes
    };

    static constexpr DateTime Instant = 1e-8;  // a millisecond, nearly

    static std::int64_t HourOf(DateTime date);

    std::map<std::int64_t, Hour> hours_;
    HeardPulse strongest_;
    long strikes_ = 0;
    long clipped_ = 0;
};

}  // namespace veltrix
