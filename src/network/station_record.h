#pragma once
// What a station says of itself, and what counts as a position, an address and a greeting.

#include <span>
#include <string>
#include <string_view>

namespace veltrix {

/// A station as a greeting, a hello or the end of a detection line describes it.
struct Station {
    std::string sIP;        ///< the address to list
    std::string sRemoteIP;  ///< the address it was seen at
    std::string sLocalIP;   ///< our own end of the connection
    std::string sStationName;
    double dLongitude = 0;  ///< degrees, east positive
    double dLatitude = 0;   ///< degrees, north positive
    std::string sVersion;
    double dClock = 0;
};

/// A record and whether it describes a station that can be listed. What cannot has fallback values.
struct ParsedStation {
    bool bValid = false;
    Station record;
};

/// True for -180 < x < 180 but 0, which stands for no position. So a station on the prime meridian cannot be
/// listed, and with ValidLatitude() none on the equator; this is deliberate.
bool ValidLongitude(double x);
/// True for -89 < x < 89 but 0.
bool ValidLatitude(double x);

/// True for a text with three points that is not "0.0.0.0"; nothing more is checked.
bool IsValidIPv4(std::string_view address);
/// True for an address in digits, and for none: false for a host name.
bool IsAddressNumeric(std::string_view text);

/// True for a name of at most 8192 bytes, twice what the cleaning of names leaves: a longer one is no name,
/// and every row of the list would be as long as it.
bool IsNameListable(std::string_view name);

/// The six fields of a greeting. REQUIRES 6 fields or more.
ParsedStation ParseGreeting(std::span<const std::string> fields);
/// The last four fields of a detection line. REQUIRES 4 fields or more.
ParsedStation ParseDetectionTail(std::span<const std::string> fields);

}  // namespace veltrix
