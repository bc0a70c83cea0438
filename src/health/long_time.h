#pragma once
// The millisecond counter without its wrap.

#include <cstdint>

#include "platform/clock.h"

namespace veltrix {

/// Milliseconds since it was made, of 64 bits. REQUIRES to be asked at least once in 49 days, as a timer of a
/// second does.
class LongTime {
  public:
    explicit LongTime(Clock& clock) : clock_(clock), last_(clock.timeGetTime()) {}

    /// The milliseconds that have passed.
    std::int64_t Now() {
        const std::int32_t now = clock_.timeGetTime();
        sinceStart_ += static_cast<std::uint32_t>(now) - static_cast<std::uint32_t>(last_);
        last_ = now;
        return sinceStart_;
    }

  private:
    Clock& clock_;
    std::int32_t last_;
    std::int64_t sinceStart_ = 0;
};

}  // namespace veltrix
