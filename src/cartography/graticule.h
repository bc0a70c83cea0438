#pragma once
// The meridians and parallels of a map.

#include <string>
#include <vector>

#include "cartography/coverage.h"
#include "cartography/map_projection.h"

namespace veltrix {

/// A label and the places, best first, at which its middle may stand.
struct MapLabel {
    std::string text;
    std::vector<MapPixel> places;
};

/// Meridians and parallels at round degrees, so many that the map has some of each.
struct Graticule {
    explicit Graticule(const MapProjection& projection);

    Coverage lines;
    std::vector<MapLabel> labels;  ///< for each line that is seen; at the map's edges where it reaches one
};

}  // namespace veltrix
