#include "output/class_alarm.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "common/neutral_text.h"
#include "location/mod_calc_globe.h"

namespace veltrix {

namespace {

constexpr std::string_view Program = "Alarm.exe";
constexpr double MinutesPerDay = 1440;
constexpr double TooFew = 2;  // near strikes, for an alarm

}  // namespace

ClassAlarm::ClassAlarm(Clock& clock, Files& files, Processes& processes, ErrorReporter& errors)
    : clock_(clock), files_(files), processes_(processes), errors_(errors) {
    dTimes[0] = clock_.Now();
}

void ClassAlarm::Init(std::int16_t rate, std::int16_t distance) {
    iAlarmRate = rate;
    iAlarmDistance = distance;
}

void ClassAlarm::Update(double dAlarmLatitude, double dAlarmLongitude, double LatitudeLightning,
                        double LongitudeLightning) {
    const double d = CalcDistance(dAlarmLatitude, dAlarmLongitude, LatitudeLightning, LongitudeLightning);
    if (!(d <= iAlarmDistance)) return;
    const DateTime now = clock_.Now();
    Count(now);
    const double r = Rate();
    if (!(r > iAlarmRate) || dCount <= TooFew || !files_.IsFile(Program)) return;
    const std::string text = FormatNeutral(r, "0.0") + ";" + FormatNeutral(d, "0.0") + ";" +
                             FormatNeutral(LatitudeLightning, "00.00000") + ";" +
                             FormatNeutral(LongitudeLightning, "000.00000") + ";" + GeneralDate(now);
    // Not left to the caller's handler, which gives up detection when the same error comes twice.
    UnderErrorConvention(errors_, "ClassAlarm.Update", [&] {
        // It is expected to do its work on start and to stand ready to be closed.
        processes_.AskToClose(processes_.Start(Program, {text}, WindowStyle::Hidden));
    });
}

void ClassAlarm::Count(DateTime now) {
    std::shift_right(dTimes.begin(), dTimes.end(), 1);
    dTimes[0] = now;
    dCount = std::min(dCount + 1, static_cast<double>(dTimes.size()));
    if (bPrimed) return;
    dTimes.fill(now);
    bPrimed = true;
}

/// Near strikes a minute. Without a span of time, also when the clock was set back, it is the limit, which is
/// not above itself.
double ClassAlarm::Rate() const {
    const double minutes = (dTimes.front() - dTimes.back()) * MinutesPerDay;
    return minutes > 0 ? dCount / minutes : iAlarmRate;
}

}  // namespace veltrix
