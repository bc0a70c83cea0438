#include "storm/sample_counter.h"

#include <algorithm>
#include <cmath>

#include "storm/renderer.h"

namespace veltrix {

namespace {

constexpr double SamplesPerTurn = 2100000000;
constexpr UtcTime Millisecond = 1'000'000;
constexpr UtcTime MatchLimit = 5 * Millisecond;
constexpr UtcTime PeakWidth = 2 * Millisecond;
constexpr std::size_t FewestInPeak = 3;
/// How far the clock of the station's computer and the delay of a line are trusted.
constexpr UtcTime WrittenWithin = 20 * NanosecondsPerSecond;

UtcTime Rounded(double nanoseconds) {
    return std::llround(nanoseconds);
}

/// `time`, put into the turn of the counter in which it is nearest to `other`.
UtcTime InTurnOf(UtcTime other, UtcTime time, double period) {
    const double turn = SamplesPerTurn * period;
    return time + Rounded(std::round(static_cast<double>(other - time) / turn) * turn);
}

/// The middle of the densest `PeakWidth` of sorted times; nothing when that holds too few.
std::optional<UtcTime> Peak(const std::vector<UtcTime>& times) {
    std::size_t best = 0, most = 0;
    for (std::size_t first = 0, last = 0; first < times.size(); ++first) {
        while (last < times.size() && times[last] - times[first] < PeakWidth) ++last;
        if (last - first <= most) continue;
        most = last - first;
        best = first;
    }
    if (most < FewestInPeak) return {};
    return times[best + most / 2];
}

}  // namespace

ArrivalTimes::ArrivalTimes(const std::vector<Strike>& strikes, const StormStation& station) {
    const Propagation propagation;
    for (std::size_t i = 0; i < strikes.size(); ++i)
        arrivals_.emplace_back(propagation.At(station, strikes[i]).time, i);
    std::ranges::sort(arrivals_);
}

std::optional<std::size_t> ArrivalTimes::StrikeAt(UtcTime time) const {
    std::optional<std::size_t> strike;
    UtcTime best = MatchLimit;
    for (const auto& [arrival, place] : Between(time - MatchLimit, time + MatchLimit)) {
        if (std::abs(arrival - time) >= best) continue;
        best = std::abs(arrival - time);
        strike = place;
    }
    return strike;
}

std::span<const std::pair<UtcTime, std::size_t>> ArrivalTimes::Between(UtcTime from, UtcTime to) const {
    constexpr auto timeOf = [](const auto& arrival) { return arrival.first; };
    return {std::ranges::lower_bound(arrivals_, from, {}, timeOf),
            std::ranges::lower_bound(arrivals_, to, {}, timeOf)};
}

std::optional<SampleCounter> SampleCounter::Learnt(std::span<const DetectionLine> log,
                                                   const ArrivalTimes& arrivals,
                                                   const StormStation& station) {
    const double period = SampleGrid(0, station.clockError).Period() * 1e9;
    std::vector<UtcTime> starts;
    for (const DetectionLine& line : log)
        for (const auto& [arrival, place] :
             arrivals.Between(line.written - WrittenWithin, line.written + WrittenWithin)) {
            const UtcTime start = arrival - Rounded(line.sample * period);
            starts.push_back(starts.empty() ? start : InTurnOf(starts.front(), start, period));
        }
    std::ranges::sort(starts);
    const std::optional<UtcTime> start = Peak(starts);
    if (!start) return {};
    return SampleCounter(*start, period);
}

UtcTime SampleCounter::TimeOf(const DetectionLine& line) const {
    return InTurnOf(line.written, start_ + Rounded(line.sample * period_), period_);
}

UtcTime SampleCounter::StartOf(const DetectionLine& line) const {
    return TimeOf(line) - Rounded(line.sample * period_);
}

}  // namespace veltrix
