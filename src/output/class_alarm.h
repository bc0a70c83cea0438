#pragma once
// ClassAlarm: starts the user's "Alarm.exe" when strikes come thick near a chosen place.

#include <array>
#include <cstdint>

#include "common/date_time.h"
#include "detection/consumers.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/processes.h"

namespace veltrix {

/// Counts the located strikes near a place and reckons their rate over the last ten of them. The count never
/// goes down, and there is no pause between two alarms: each near strike starts the program again for as long
/// as the rate is high. Owned by the form. REQUIRES that what it is given outlives it.
class ClassAlarm final : public StrikeAlarm {
  public:
    ClassAlarm(Clock& clock, Files& files, Processes& processes, ErrorReporter& errors);

    /// Takes one located strike, all in degrees, the place to watch first. When it is near and there were
    /// more strikes a minute than the limit, "Alarm.exe", if the working directory holds one, is started with
    /// rate, distance, latitude, longitude and time as one argument, joined by ";", and asked to close when
    /// it has done its work. A program that cannot be started is reported, and costs the strike nothing.
    void Update(double dAlarmLatitude, double dAlarmLongitude, double LatitudeLightning,
                double LongitudeLightning) override;

    /// Sets the limits: strikes a minute, and kilometres, which themselves count as near. What was counted
    /// stays.
    void Init(std::int16_t rate, std::int16_t distance);

  private:
    void Count(DateTime now);
    double Rate() const;

    Clock& clock_;
    Files& files_;
    Processes& processes_;
    ErrorReporter& errors_;
    std::int16_t iAlarmRate = 10;
    std::int16_t iAlarmDistance = 25;
    double dCount = 0;                  // near strikes, at most those of dTimes
    std::array<DateTime, 10> dTimes{};  // of the latest near strikes, the newest first
    bool bPrimed = false;               // dTimes was filled by a first near strike
};

}  // namespace veltrix
