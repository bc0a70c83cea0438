#pragma once
// A station's sample counter, tied to universal time by the strikes that it heard.

#include <cstddef>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "storm/propagation.h"
#include "storm/station_report.h"

namespace veltrix {

/// When the strikes of a list arrive at a station.
class ArrivalTimes {
  public:
    ArrivalTimes(const std::vector<Strike>& strikes, const StormStation& station);

    /// The place in the list of the strike that arrives nearest to `time`, none when that is 5 ms off or
    /// more.
    std::optional<std::size_t> StrikeAt(UtcTime time) const;
    /// All arrivals from `from` to before `to`, in order, with the places of their strikes.
    std::span<const std::pair<UtcTime, std::size_t>> Between(UtcTime from, UtcTime to) const;

  private:
    std::vector<std::pair<UtcTime, std::size_t>> arrivals_;
};

/// Counts the frames of a station's sound card from the start of the station on, and wraps at 2100000000. Its
/// rate is known from the scenario; the instant of sample 0 is learnt.
class SampleCounter {
  public:
    /// Learns the counter's start from a strike log, whose lines must be of one run of the station. For each
    /// line the true arrivals within 20 s of it give a difference; those of the right strikes agree, the
    /// others are scattered, so the densest 2 ms of all differences hold the answer. Nothing when fewer than
    /// three agree.
    static std::optional<SampleCounter> Learnt(std::span<const DetectionLine> log,
                                               const ArrivalTimes& arrivals, const StormStation& station);

    /// The instant of the arrival that made a detection; the turn of the counter is the nearest to the time
    /// at which the line was written.
    UtcTime TimeOf(const DetectionLine& line) const;
    /// The instant of sample 0, in the turn of that detection.
    UtcTime StartOf(const DetectionLine& line) const;

  private:
    SampleCounter(UtcTime start, double period) : start_(start), period_(period) {}

    UtcTime start_;  // some turn's sample 0, less the time from onset to trigger
    double period_;  // ns
};

}  // namespace veltrix
