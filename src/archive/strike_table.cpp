#include "archive/strike_table.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <string_view>

#include "common/neutral_text.h"

namespace veltrix {

namespace {

/// A column of numbers. Decimals as far as they mean something.
struct Column {
    std::string name;
    int decimals;
    double (*of)(const LocatedPair&);
};

std::vector<Column> ColumnsFor(const TableStations& stations) {
    return {
        {stations.first + ":bearing", 1, [](const LocatedPair& s) { return s.firstBearing; }},
        {stations.first + ":distance", 1, [](const LocatedPair& s) { return s.firstDistance; }},
        {stations.first + ":amplitude", 1, [](const LocatedPair& s) { return s.first.pulse.dAmp; }},
        {stations.first + ":sample", 0, [](const LocatedPair& s) { return s.first.pulse.dLocalSample; }},
        {stations.second + ":bearing", 1, [](const LocatedPair& s) { return s.secondBearing; }},
        {stations.second + ":distance", 1, [](const LocatedPair& s) { return s.secondDistance; }},
        {stations.second + ":amplitude", 1, [](const LocatedPair& s) { return s.second.pulse.dAmp; }},
        {stations.second + ":sample", 0, [](const LocatedPair& s) { return s.second.pulse.dLocalSample; }},
        {"delta_t", 3, [](const LocatedPair& s) { return s.deltaT; }},
        {"toa_error", 3, [](const LocatedPair& s) { return s.toaError; }},
    };
}

constexpr int PlaceDecimals = 5;

std::string Rounded(double value, int decimals) {
    std::string mask = decimals > 0 ? "0." : "0";
    return FormatNeutral(value, mask.append(static_cast<std::size_t>(decimals), '0'));
}

/// ISO 8601, with milliseconds.
std::string TimeOf(const LocatedPair& strike, const TableStations& stations) {
    const double milliseconds = std::round(strike.first.date * SecondsPerDay * 1000);
    const double second = std::floor(milliseconds / 1000);
    return FormatDate(second / SecondsPerDay, "YYYY-MM-DD") + 'T' +
           FormatDate(second / SecondsPerDay, "HH:MM:SS") + '.' +
           FormatNeutral(milliseconds - second * 1000, "000") + (stations.isUniversal ? "Z" : "");
}

/// A field, in quotes when it needs them.
std::string Field(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

}  // namespace

std::string FixLineOf(const LocatedPair& strike, const TableStations& stations) {
    return "fix " + GeneralDate(strike.first.date) + ", " + FormatNeutral(strike.latitude, "00.00000") +
           ", " + FormatNeutral(strike.longitude, "000.00000") + ", " +
           FormatNeutral(strike.first.pulse.dLocalSample, "0") + ", " + stations.second;
}

std::string StrikeCsv(const std::vector<LocatedPair>& strikes, const TableStations& stations) {
    const std::vector<Column> columns = ColumnsFor(stations);
    std::string text = "time,latitude,longitude";
    for (const Column& column : columns) text += ',' + Field(column.name);
    text += '\n';
    for (const LocatedPair& strike : strikes) {
        text += TimeOf(strike, stations) + ',' + Rounded(strike.latitude, PlaceDecimals) + ',' +
                Rounded(strike.longitude, PlaceDecimals);
        for (const Column& column : columns) text += ',' + Rounded(column.of(strike), column.decimals);
        text += '\n';
    }
    return text;
}

std::string StrikeGeoJson(const std::vector<LocatedPair>& strikes, const TableStations& stations) {
    using Json = nlohmann::ordered_json;
    const std::vector<Column> columns = ColumnsFor(stations);
    const auto number = [](double value, int decimals) { return std::stod(Rounded(value, decimals)); };
    // A line for each strike, so that the file can be read and compared by people, too.
    std::string text = R"({"type":"FeatureCollection","features":[)";
    std::string_view separator = "\n";
    for (const LocatedPair& strike : strikes) {
        Json properties = {{"time", TimeOf(strike, stations)}};
        for (const Column& column : columns)
            properties[column.name] = number(column.of(strike), column.decimals);
        const Json feature = {
            {"type", "Feature"},
            {"geometry",
             {{"type", "Point"},
              {"coordinates",
               {number(strike.longitude, PlaceDecimals), number(strike.latitude, PlaceDecimals)}}}},
            {"properties", properties}};
        text.append(separator).append(feature.dump(-1, ' ', false, Json::error_handler_t::replace));
        separator = ",\n";
    }
    return text + "\n]}\n";
}

}  // namespace veltrix
