#pragma once
// The precise clock: the date-time joined to the millisecond counter.

#include <cstdint>
#include <string>

#include "common/date_time.h"
#include "platform/clock.h"

namespace veltrix {

/// A time of day with millisecond steps. It takes the computer's date-time once, at the first reading, and
/// from then on moves with the millisecond counter alone: a later change of the computer's clock does not
/// reach it, and it never goes back. It carries the counter on over its wraps, for which it must be read at
/// least once in 49 days; one that it misses is missing from then on. One for the whole station, owned by the
/// form. REQUIRES that the clock outlives it.
class PreciseNow {
  public:
    explicit PreciseNow(Clock& clock) : clock_(clock) {}

    /// The present date-time in days.
    DateTime Now();

    /// The date-time at which the counter stood at 0, read without a sign; 0 before the first reading.
    DateTime Base() const { return base_; }

  private:
    Clock& clock_;
    std::int64_t counter_ = 0;  // the millisecond counter, continued over its wraps
    DateTime base_ = 0;
};

/// A point and three digits, the fraction of the second of `date` as its companion to a clock text whose
/// seconds are rounded: half a second is added first, so .500 stands for a full second. Cut, not rounded,
/// behind the third digit.
std::string SecondsFraction(DateTime date);

}  // namespace veltrix
