#include "station/map_maker.h"

#include "cartography/map_files.h"
#include "cartography/map_painter.h"
#include "network/station_list_file.h"

namespace veltrix {

const Coastlines& MapMaker::TheCoastlines() {
    if (!coastlines_) coastlines_ = std::make_unique<Coastlines>(platform_.pictures.Coastlines());
    return *coastlines_;
}

const Bitmap& MapMaker::BuiltInMap() {
    if (builtIn_.pixels.empty()) builtIn_ = PaintMap(MapPlace{}, TheCoastlines(), platform_.glyphs);
    return builtIn_;
}

void MapMaker::WriteDefaultMap() {
    if (!platform_.files.Exists(DefaultMap)) WriteMap(platform_.files, DefaultMap, MapPlace{}, BuiltInMap());
}

void MapMaker::Make(const MapPlace& place, const std::string& name) {
    WriteMap(platform_.files, name, place, PaintMap(place, TheCoastlines(), platform_.glyphs));
}

}  // namespace veltrix
