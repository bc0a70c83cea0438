#pragma once
// Every line that stations send to each other: the one place of its fields and masks.

#include <string>
#include <string_view>

#include "common/date_time.h"
#include "common/detection.h"

namespace veltrix {

/// The port that stations serve each other on, and that of the link stream.
inline constexpr int StationPort = 4711;
inline constexpr int LinkPort = 4712;

/// Ends every line but the greeting and the link line.
inline constexpr char LineEnd = '\r';

/// The address in an online entry that stands for the sender itself.
inline constexpr std::string_view OwnAddress = "0.0.0.0";

/// Masks of a position where they are written outside a line, too.
inline constexpr std::string_view LongitudeMask = "000.00000";
inline constexpr std::string_view LatitudeMask = "00.00000";

/// The patterns that lines are taken apart by.
inline constexpr std::string_view GreetingPattern = "*,*,*,*,*,*";
inline constexpr std::string_view MarkedEntryPattern = "*,*,*,*,*,*,*";
inline constexpr std::string_view PlainEntryPattern = "*,*,*,*,*,*";
inline constexpr std::string_view DetectionPattern = "*,*,*,*,*";
inline constexpr std::string_view DetectionTailPattern = "*,*,*,*";

/// The local station as it tells others of itself.
struct HomeStation {
    std::string sStationName;
    std::string sAnnouncement;
    double HomeLongitude = 0;  ///< degrees, in force
    double HomeLatitude = 0;
    double LongitudeField = 0;  ///< degrees, as the boxes of the form show them
    double LatitudeField = 0;
    std::string sVersion;  ///< of the program: major, minor and revision
    double dClock = 0;     ///< clock figure
};

/// What an online entry tells.
struct OnlineEntry {
    DateTime dTime = 0;
    std::string IP;
    double dLatitude = 0;
    double dLongitude = 0;
    std::string sStationName;
    std::string sAnnouncement;
};

/// Server to client, once, right after accepting: time, name, longitude, latitude, version, clock figure,
/// with a comma and a blank between them and line feed, carriage return behind.
std::string GreetingText(const HomeStation& home, DateTime now);

/// Client to server: time, address, latitude, longitude, name, announcement and the mark. With OwnAddress it
/// is the hello that a client opens with.
std::string MarkedEntryText(const OnlineEntry& entry);
/// The same without the mark, for a server that does not know it.
std::string PlainEntryText(const OnlineEntry& entry);

/// Server to client: time, bearing, sample number, amplitude, stopwatch reading, home latitude and longitude,
/// name.
std::string DetectionText(const Detection& detection, const HomeStation& home);

/// To the link client: the time of the line, distance in km and bearing in degrees from home to a strike, and
/// a status. `now` is the precise time.
std::string FormatLinkLine(DateTime now, double dDistance, double dBearing, int lStatus);

}  // namespace veltrix
