#pragma once
// How far the clocks of two recordings are apart, learnt from the strikes that both have heard.

#include <optional>
#include <span>

namespace veltrix {

/// The time of one recording as a straight line over that of another, in seconds.
struct ClockOffset {
    double atZero = 0;  ///< what time 0 of the second recording differs: first less second, s
    double rate = 0;    ///< what that grows by in each second

    /// A time of the second recording as the first one counts.
    double ToFirst(double second) const { return second + atZero + rate * second; }
};

/// The offset that most strikes agree on. Both rows hold the times of a recording's pulses in seconds,
/// ascending. A pulse of one recording differs from each pulse of the other by some time; those of common
/// strikes agree within the few milliseconds of travel, the others are scattered. So the fullest part of the
/// histogram of all differences up to `reach` seconds holds the answer for a span of five minutes, and it
/// moves from span to span by no more than sample clocks drift (0.05 %). The line through all differences
/// found is that of the median slope (Theil and Sen), which a third of strays does not disturb. Nothing when
/// no span has a part that stands out from chance.
std::optional<ClockOffset> FindClockOffset(std::span<const double> first, std::span<const double> second,
                                           double reach);

}  // namespace veltrix
