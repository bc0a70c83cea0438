#pragma once
// The computer's clocks. Nothing else in the system asks for the time.

#include <cstdint>

#include "common/date_time.h"

namespace veltrix {

/// The clocks of one computer. One object for the whole program.
class Clock {
  public:
    virtual ~Clock() = default;

    /// The present local date-time, as the user's clock shows it; it can step both ways.
    virtual DateTime Now() = 0;

    /// A monotonic millisecond counter of 32 bits that wraps, read as signed. Its start is arbitrary.
    virtual std::int32_t timeGetTime() = 0;

    /// Limits of the counter's period, in milliseconds.
    struct TimerCaps {
        std::int32_t lMinPeriod = 1;
        std::int32_t lMaxPeriod = 1000000;
    };
    /// The limits of this computer's counter.
    virtual TimerCaps timeGetDevCaps() { return {}; }

    /// Asks for a resolution of the counter, in milliseconds, and gives it back. False on failure. Where the
    /// counter always has its full resolution these do nothing and succeed.
    virtual bool timeBeginPeriod(std::int32_t) { return true; }
    virtual bool timeEndPeriod(std::int32_t) { return true; }
};

}  // namespace veltrix
