#include "storm/utc_time.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace veltrix {

namespace {

/// The number that fills all of `digits`; -1 when something else is among them.
int Number(std::string_view digits) {
    int value = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') return -1;
        value = value * 10 + (c - '0');
    }
    return digits.empty() ? -1 : value;
}

/// The nanoseconds of a fraction such as ".25"; -1 when it is none. Nothing at all is 0.
int Nanoseconds(std::string_view fraction) {
    if (fraction.empty()) return 0;
    if (fraction.front() != '.' || fraction.size() < 2 || fraction.size() > 10) return -1;
    std::string digits(fraction.substr(1));
    digits.resize(9, '0');
    return Number(digits);
}

}  // namespace

std::optional<UtcTime> ParseUtc(std::string_view text) {
    if (text.ends_with('Z')) text.remove_suffix(1);
    if (text.size() < 19) return {};
    const auto isOneOf = [text](std::size_t at, std::string_view choices) {
        return choices.find(text[at]) != std::string_view::npos;
    };
    if (!isOneOf(4, "-/") || !isOneOf(7, "-/") || !isOneOf(10, "T ") || text[13] != ':' || text[16] != ':')
        return {};
    const int year = Number(text.substr(0, 4));
    const int month = Number(text.substr(5, 2));
    const int day = Number(text.substr(8, 2));
    const int hour = Number(text.substr(11, 2));
    const int minute = Number(text.substr(14, 2));
    const int second = Number(text.substr(17, 2));
    const int nanoseconds = Nanoseconds(text.substr(19));
    if (std::min({year, month, day, hour, minute, second, nanoseconds}) < 0) return {};
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok() || year < 1970 || year > 2199 || hour > 23 || minute > 59 || second > 59) return {};
    const std::int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
    return (days * 86400 + hour * 3600 + minute * 60 + second) * NanosecondsPerSecond + nanoseconds;
}

std::string UtcText(UtcTime time) {
    using namespace std::chrono;
    const sys_time<microseconds> instant(floor<microseconds>(nanoseconds(time)));
    const sys_days midnight = floor<days>(instant);
    const year_month_day date(midnight);
    const hh_mm_ss clock(instant - midnight);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%06dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()), static_cast<int>(clock.subseconds().count()));
    return text;
}

}  // namespace veltrix
