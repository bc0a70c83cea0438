#include "cartography/map_files.h"

#include <array>

#include "common/neutral_text.h"
#include "display/bitmap_file.h"

namespace veltrix {

namespace {

struct Entry {
    std::string_view begin;
    std::string_view label;
    double MapPlace::*value;
};

constexpr std::array Entries{Entry{"Ra", "Radius: ", &MapPlace::MapRadius},
                             Entry{"Lo", "Longitude: ", &MapPlace::MapLongitude},
                             Entry{"La", "Latitude: ", &MapPlace::MapLatitude}};

}  // namespace

std::string GeometryName(std::string_view map) {
    constexpr std::string_view Ending = "dat";
    if (map.size() <= Ending.size()) return {};
    return std::string(map.substr(0, map.size() - Ending.size())).append(Ending);
}

MapPlace ReadGeometry(Files& files, std::string_view name) {
    MapPlace place;
    if (!files.Exists(name)) return place;
    for (const std::string& line : files.ReadLines(name)) {
        const std::size_t colon = line.find(':');
        if (colon == std::string::npos) continue;
        for (const Entry& entry : Entries)
            if (line.starts_with(entry.begin))
                place.*entry.value = ValNeutral(std::string_view(line).substr(colon + 1));
    }
    return place;
}

void WriteMap(Files& files, std::string_view name, const MapPlace& place, const Bitmap& map) {
    std::string geometry;
    for (const Entry& entry : Entries)
        geometry.append(entry.label).append(GeneralNumber(place.*entry.value)) += '\n';
    SaveBitmap(files, name, map);
    files.WriteWhole(GeometryName(name), geometry);
}

}  // namespace veltrix
