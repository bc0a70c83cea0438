#include "network/station_record.h"

#include <algorithm>

#include "common/neutral_text.h"
#include "common/trimmed.h"

namespace veltrix {

namespace {

constexpr double FallbackLatitude = 52.0;
constexpr double FallbackLongitude = 5.0;
constexpr std::size_t ShortestName = 2;
constexpr std::size_t LongestName = 8192;

/// Takes place and name; a name counts with the blank that stands before it in a greeting.
ParsedStation Describe(const std::string& name, const std::string& longitude, const std::string& latitude) {
    ParsedStation parsed;
    Station& record = parsed.record;
    record.dLatitude = ValNeutral(latitude);
    if (!ValidLatitude(record.dLatitude)) {
        record.dLatitude = FallbackLatitude;
        return parsed;
    }
    record.dLongitude = ValNeutral(longitude);
    if (!ValidLongitude(record.dLongitude)) {
        record.dLongitude = 0;
        return parsed;
    }
    parsed.bValid = name.size() >= ShortestName && IsNameListable(name);
    record.sStationName = parsed.bValid ? name : "New Station";
    if (!parsed.bValid) {
        record.dLongitude = FallbackLongitude;
        record.dLatitude = FallbackLatitude;
    }
    return parsed;
}

}  // namespace

bool ValidLongitude(double x) {
    return x != 0 && -180 < x && x < 180;
}

bool ValidLatitude(double x) {
    return x != 0 && -89 < x && x < 89;
}

bool IsValidIPv4(std::string_view address) {
    return std::ranges::count(address, '.') >= 3 && Trimmed(address) != "0.0.0.0";
}

bool IsAddressNumeric(std::string_view text) {
    return text.empty() || (text.front() >= '0' && text.front() <= '9');
}

bool IsNameListable(std::string_view name) {
    return name.size() <= LongestName;
}

ParsedStation ParseGreeting(std::span<const std::string> fields) {
    ParsedStation parsed = Describe(fields[1], fields[2], fields[3]);
    if (!parsed.bValid) return parsed;
    parsed.record.sVersion = fields[4];
    parsed.record.dClock = ValNeutral(fields[5]);
    return parsed;
}

ParsedStation ParseDetectionTail(std::span<const std::string> fields) {
    return Describe(fields[3], fields[2], fields[1]);
}

}  // namespace veltrix
