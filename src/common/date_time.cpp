#include "common/date_time.h"

#include <chrono>
#include <cmath>

namespace veltrix {

namespace {

constexpr std::chrono::sys_days DayZero = std::chrono::year{1899} / 12 / 30;

constexpr double SecondsUntil(std::chrono::sys_days day) {
    return static_cast<double>((day - DayZero).count()) * SecondsPerDay;
}

constexpr double FirstSecond = SecondsUntil(std::chrono::year{100} / 1 / 1);
constexpr double LastSecond = SecondsUntil(std::chrono::year{10000} / 1 / 1) - 1;

}  // namespace

CalendarParts CalendarOf(DateTime date) {
    const double begun = std::floor(std::round(date * SecondsPerDay * 1000) / 1000);
    const double seconds = std::fmin(std::fmax(begun, FirstSecond), LastSecond);  // fmax passes over NaN
    const double day = std::floor(seconds / SecondsPerDay);
    const int secondOfDay = static_cast<int>(seconds - day * SecondsPerDay);
    const std::chrono::sys_days days = DayZero + std::chrono::days(static_cast<int>(day));
    const std::chrono::year_month_day civil(days);
    CalendarParts parts;
    parts.year = static_cast<int>(civil.year());
    parts.month = static_cast<int>(static_cast<unsigned>(civil.month()));
    parts.day = static_cast<int>(static_cast<unsigned>(civil.day()));
    parts.hour = secondOfDay / 3600;
    parts.minute = secondOfDay / 60 % 60;
    parts.second = secondOfDay % 60;
    parts.weekday = static_cast<int>(std::chrono::weekday(days).iso_encoding());
    return parts;
}

DateTime DateTimeOf(const CalendarParts& parts) {
    const std::chrono::sys_days days =
        std::chrono::year{parts.year} / static_cast<int>(parts.month) / parts.day;
    const double seconds = parts.hour * 3600.0 + parts.minute * 60.0 + parts.second;
    return static_cast<double>((days - DayZero).count()) + seconds / SecondsPerDay;
}

bool IsCalendarDate(const CalendarParts& parts) {
    const bool timeExists = parts.hour >= 0 && parts.hour < 24 && parts.minute >= 0 && parts.minute < 60 &&
                            parts.second >= 0 && parts.second < 60;
    if (!timeExists || parts.year < 100 || parts.year > 9999 || parts.month < 1 || parts.day < 1)
        return false;
    return (std::chrono::year{parts.year} / static_cast<int>(parts.month) / parts.day).ok();
}

}  // namespace veltrix
