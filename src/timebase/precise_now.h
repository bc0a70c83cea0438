#pragma once
// The precise clock: the date-time joined to the millisecond counter.

#include <string>

#include "common/date_time.h"
#include "platform/clock.h"

namespace veltrix {

/// A time of day with millisecond steps. It takes the computer's date-time once, at the first reading, and
/// from then on moves with the millisecond counter alone: a later change of the computer's clock does not
/// reach it, and it never goes back except when the counter wraps, every 49.7 days, which sets it back by as
/// much. One for the whole station, owned by the form. REQUIRES that the clock outlives it.
class PreciseNow {
  public:
    explicit PreciseNow(Clock& clock) : clock_(clock) {}

    /// The present date-time in days.
    DateTime Now();

    /// The date-time at which the counter stood at 0; 0 before the first reading.
    DateTime Base() const { return base_; }

  private:
    Clock& clock_;
    DateTime base_ = 0;
};

/// A point and three digits, the fraction of the second of `date` as its companion to a clock text whose
/// seconds are rounded: half a second is added first, so .500 stands for a full second. Cut, not rounded,
/// behind the third digit.
std::string SecondsFraction(DateTime date);

}  // namespace veltrix
