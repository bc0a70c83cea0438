#pragma once
// A clock that stands until a test moves it.

#include <cstdint>

#include "platform/clock.h"

namespace veltrix {

/// Starts at 2024/06/15 12:00:00, a Saturday, with timeGetTime at 1000.
class ManualClock final : public Clock {
  public:
    DateTime Now() override { return base_ + static_cast<double>(sinceBase_) / 86400000.0; }
    std::int32_t timeGetTime() override { return static_cast<std::int32_t>(counter_); }

    /// Moves both clocks.
    void Advance(std::int64_t milliseconds) {
        sinceBase_ += milliseconds;
        elapsed_ += milliseconds;
        counter_ += static_cast<std::uint32_t>(milliseconds);
    }
    /// Sets the date-time alone, as a user or a time service does.
    void SetNow(DateTime now) {
        base_ = now;
        sinceBase_ = 0;
    }
    void SetNow(const CalendarParts& parts) { SetNow(DateTimeOf(parts)); }
    /// Sets the counter alone, for instance just below its wrap.
    void SetTimeGetTime(std::int32_t counter) { counter_ = static_cast<std::uint32_t>(counter); }

    /// All milliseconds this clock was advanced by; the timers of a ManualLoop run on it.
    std::int64_t Elapsed() const { return elapsed_; }

  private:
    DateTime base_ = DateTimeOf({2024, 6, 15, 12, 0, 0, 6});
    std::int64_t sinceBase_ = 0;
    std::int64_t elapsed_ = 0;
    std::uint32_t counter_ = 1000;
};

}  // namespace veltrix
