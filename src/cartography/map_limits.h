#pragma once
// What maps can be painted.

#include "location/map_place.h"
#include "location/mod_calc_globe.h"

namespace veltrix {

/// Width and height of a map, pixels.
inline constexpr int MapSize = static_cast<int>(MapSide);

// What PaintMap can paint. At the very poles the projection knows no directions.
inline constexpr double LeastMapRadius = 50;
inline constexpr double MostMapRadius = 9000;
inline constexpr double MostMapLongitude = 180;
inline constexpr double MostMapLatitude = 89.99;

}  // namespace veltrix
