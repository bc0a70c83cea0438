#pragma once
// What part of the Earth a map shows.

namespace veltrix {

/// A square map around a place. The values here are those of a map about which nothing is known, and of the
/// built-in one.
struct MapPlace {
    double MapRadius = 2000;        ///< from the centre to the nearest edge, km
    double MapLongitude = 4.43579;  ///< of the centre, degrees, positive east
    double MapLatitude = 50.93272;  ///< of the centre, degrees, positive north

    bool operator==(const MapPlace&) const = default;
};

}  // namespace veltrix
