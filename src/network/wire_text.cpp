#include "network/wire_text.h"

#include <initializer_list>

#include "common/neutral_text.h"
#include "common/replace_first.h"
#include "network/capability.h"
#include "timebase/precise_now.h"

namespace veltrix {

namespace {

constexpr std::string_view StampMask = "YYYY/MM/DD HH:MM:SS";
constexpr std::string_view BearingMask = "000.00";
constexpr std::string_view AmplitudeMask = "000.0";
constexpr std::string_view SampleMask = "0000000000";
constexpr std::string_view TickTimeMask = "000000000";
constexpr std::string_view ClockMask = "0";
constexpr std::string_view LinkDistanceMask = "000000.0";
constexpr std::string_view LinkBearingMask = "000.0";
constexpr double HalfSecond = 0.5 / SecondsPerDay;

/// REQUIRES at least one field.
std::string Joined(std::initializer_list<std::string> fields, std::string_view separator) {
    std::string line;
    for (const std::string& field : fields) {
        line += field;
        line += separator;
    }
    line.resize(line.size() - separator.size());
    return line;
}

/// A line that begins with a stamp.
std::string Stamped(DateTime time, std::initializer_list<std::string> fields) {
    std::string line = FormatDate(time, StampMask) + "," + Joined(fields, ",");
    FixStampSeparators(line);
    return line;
}

/// A text as a field; a second comma in it stays, and shifts the fields behind it.
std::string Field(const std::string& text) {
    return ReplaceFirst(text, ",", " ");
}

std::string EntryFields(const OnlineEntry& entry) {
    return Stamped(entry.dTime, {entry.IP, FormatNeutral(entry.dLatitude, LatitudeMask),
                                 FormatNeutral(entry.dLongitude, LongitudeMask), Field(entry.sStationName)}) +
           "," + Field(entry.sAnnouncement);
}

}  // namespace

std::string GreetingText(const HomeStation& home, DateTime now) {
    std::string stamp = FormatDate(now, StampMask);
    FixStampSeparators(stamp);
    // The latitude, too, has three digits before the point, here alone.
    return Joined({std::string(MarkedEntriesMark) + stamp + " Connected to Veltrix", Field(home.sStationName),
                   FormatNeutral(home.HomeLongitude, LongitudeMask),
                   FormatNeutral(home.HomeLatitude, LongitudeMask), home.sVersion,
                   FormatNeutral(home.dClock, ClockMask)},
                  ", ") +
           "\n\r";
}

std::string MarkedEntryText(const OnlineEntry& entry) {
    return EntryFields(entry) + "," + std::string(MarkedEntriesMark) + LineEnd;
}

std::string PlainEntryText(const OnlineEntry& entry) {
    return EntryFields(entry) + LineEnd;
}

std::string DetectionText(const Detection& detection, const HomeStation& home) {
    // Amplitude and sample number stand the other way round than in the log's record. The longitude has the
    // two-digit mask; from 100 degrees on it just is a digit longer.
    return Stamped(detection.dDate,
                   {FormatNeutral(detection.dDir, BearingMask), FormatNeutral(detection.dTime, SampleMask),
                    FormatNeutral(detection.dAmp, AmplitudeMask),
                    FormatNeutral(detection.lTickTime, TickTimeMask),
                    FormatNeutral(home.LatitudeField, LatitudeMask),
                    FormatNeutral(home.LongitudeField, LatitudeMask)}) +
           "," + home.sStationName + LineEnd;
}

std::string FormatLinkLine(DateTime now, double dDistance, double dBearing, int lStatus) {
    // The fraction belongs to a clock text whose seconds are rounded.
    return Joined({FormatDate(now + HalfSecond, "YYYY-MM-DD HH:MM:SS") + SecondsFraction(now) + "000",
                   FormatNeutral(dDistance, LinkDistanceMask), FormatNeutral(dBearing, LinkBearingMask),
                   std::to_string(lStatus)},
                  ", ") +
           "\n\r";
}

}  // namespace veltrix
