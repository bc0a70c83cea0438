#pragma once
// The clocks of the computer we run on.

#include "platform/clock.h"

namespace veltrix {

/// The local date-time of a moment, given in milliseconds since the first of January 1970 UTC.
DateTime LocalDateTime(std::int64_t milliseconds);

/// The clocks of this computer.
class QtClock final : public Clock {
  public:
    /// The wall clock in the computer's time zone, in steps of a millisecond.
    DateTime Now() override;
    /// Milliseconds of a clock that no user and no time service sets.
    std::int32_t timeGetTime() override;
};

}  // namespace veltrix
