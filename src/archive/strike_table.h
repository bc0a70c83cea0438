#pragma once
// Located strikes as files for other programs.

#include <string>
#include <vector>

#include "archive/pair_analysis.h"

namespace veltrix {

/// Who located the strikes.
struct TableStations {
    std::string first;
    std::string second;
    bool isUniversal = false;  ///< times are universal time and get a "Z"
};

/// A strike as a station prints it: "fix ", date and time, latitude, longitude, sample number, station.
std::string FixLineOf(const LocatedPair& strike, const TableStations& stations);

/// A table: a header line, then a line for each strike, fields separated by commas, lines ended by a line
/// feed. docs/archive.md tells the columns.
std::string StrikeCsv(const std::vector<LocatedPair>& strikes, const TableStations& stations);

/// A FeatureCollection (RFC 7946), a point for each strike, with the columns of the table as properties.
std::string StrikeGeoJson(const std::vector<LocatedPair>& strikes, const TableStations& stations);

}  // namespace veltrix
