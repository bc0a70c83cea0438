#pragma once
// Date-times as 8-byte floats: days since 30 December 1899, the time of day as the fraction.

#include <cstdint>

namespace veltrix {

/// Days since 30 December 1899 00:00 local time. Milliseconds are kept exactly enough for centuries around
/// today.
using DateTime = double;

/// A date-time taken apart. Month and day count from 1; weekday 1 is Monday.
struct CalendarParts {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int weekday = 6;
};

/// The calendar parts of `date`, as a clock shows them: the second that has begun. The date is rounded to the
/// nearest millisecond first, so that a float just below a full second reads as that second. A date before
/// the year 100 and NaN read as that year's first second, one after 9999 as that year's last.
CalendarParts CalendarOf(DateTime date);

/// The date-time of calendar parts; `weekday` is not looked at. The proleptic Gregorian calendar holds
/// throughout.
DateTime DateTimeOf(const CalendarParts& parts);

/// True when the year lies in 100 to 9999, and month, day, hour, minute and second exist.
bool IsCalendarDate(const CalendarParts& parts);

/// Days from 30 December 1899 to the first of January 1970, where other clocks of computers begin.
inline constexpr DateTime UnixEpoch = 25569.0;

/// Seconds of a day; days of other lengths do not exist here.
inline constexpr double SecondsPerDay = 86400.0;

}  // namespace veltrix
