#pragma once
// CStopWatchMM: a millisecond stopwatch on the system's multimedia timer.

#include <cstdint>

#include "platform/clock.h"

namespace veltrix {

/// A stopwatch that runs from its creation and asks the timer for a period of 5 ms as long as it lives. Its
/// owner is the part that measures with it. All times are milliseconds on the timer's 32-bit counter and wrap
/// with it: a time of 2^31 ms (24.8 days) or more reads wrong. REQUIRES that the clock outlives it.
class CStopWatchMM {
  public:
    /// Starts at 0, running. Raises what BeginPeriod(5) raises.
    explicit CStopWatchMM(Clock& clock);
    /// Gives the period back, if one is in force.
    ~CStopWatchMM();
    CStopWatchMM(const CStopWatchMM&) = delete;
    CStopWatchMM& operator=(const CStopWatchMM&) = delete;

    /// The time gathered while running, since the last Reset().
    std::int32_t ElapsedTime() const;
    /// Limits of the timer's period, as it reported them at creation.
    std::int32_t MinPeriod() const { return lMinPeriod; }
    std::int32_t MaxPeriod() const { return lMaxPeriod; }
    /// The period in force, 0 when there is none.
    std::int32_t Period() const { return lPeriod; }

    /// Asks for a period. Raises Internal when one is in force, when it lies outside the limits, or when the
    /// timer refuses; only then does no period stand afterwards, else the old one stays.
    void BeginPeriod(std::int32_t period);
    /// Gives back the period in force. Raises Internal when there is none or another one, which changes
    /// nothing, or when the timer refuses; no period stands then.
    void EndPeriod(std::int32_t period);

    /// Sets the time to 0. A running stopwatch goes on; a stopped one must not be reset before it is started
    /// again, or it reads the negative of the counter until then.
    void Reset();
    void StartTiming();
    void StopTiming();

  private:
    Clock& clock_;
    std::int32_t lStart = 0;        // counter at the last start, 0 while stopped
    std::int32_t lAccumulated = 0;  // gathered before the last stop
    std::int32_t lRunning = 1;      // 1 while running, else 0
    std::int32_t lPeriod = 0;
    std::int32_t lMinPeriod = 0;
    std::int32_t lMaxPeriod = 0;
};

}  // namespace veltrix
