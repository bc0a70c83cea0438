#pragma once
// What part of the Earth a map shows.

#include "location/mod_calc_globe.h"

namespace veltrix {

/// A square map around a place. The values here are those of a map about which nothing is known.
struct MapPlace {
    double MapRadius = 2000;        ///< from the centre to the nearest edge, km
    double MapLongitude = 4.43579;  ///< of the centre, degrees, positive east
    double MapLatitude = 50.93272;  ///< of the centre, degrees, positive north

    bool operator==(const MapPlace&) const = default;
};

/// Width and height of a map, pixels.
inline constexpr int MapSize = static_cast<int>(MapSide);

// What PaintMap can paint. At the very poles the projection knows no directions.
inline constexpr double LeastMapRadius = 50;
inline constexpr double MostMapRadius = 9000;
inline constexpr double MostMapLongitude = 180;
inline constexpr double MostMapLatitude = 89.99;

}  // namespace veltrix
