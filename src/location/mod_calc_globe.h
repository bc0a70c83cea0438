#pragma once
// ModCalcGlobe: distances, bearings and crossings of bearings on the globe, and its projection onto the map.
// Plain functions without state.
//
// Angles are degrees: latitude positive north, longitude positive east, bearings clockwise from north.
// Constants are deliberately what they are, wrong digits included: the calibration of all stations rests on
// them. docs/accuracy.md tells how far the results lie from exact ones.

namespace veltrix {

/// The great-circle distance between two places, in the unit of `dRadius`; 0 stands for the Earth's
/// equatorial radius in kilometres. Spherical law of cosines: two places nearer than some decimetres read as
/// one.
double CalcDistance(double dLat1, double dLon1, double dLat2, double dLon2, double dRadius = 0);

/// The bearings at both ends of a great circle.
struct BearingPair {
    double dBearing1 = 0;  ///< from place 1 to place 2
    double dBearing2 = 0;  ///< from place 2 to place 1
};

/// Bearings between two places, -180 to 180, east positive, from the spherical triangle with the pole. Equal
/// places give 90 and -90.
BearingPair CalcBearings(double dLat1, double dLon1, double dLat2, double dLon2);

/// A place on the globe.
struct GeoPoint {
    double dLon = 0;
    double dLat = 0;
};

/// Where the great circles of two bearings cross: of the two opposite crossings the one nearer to both places
/// together, so that a bearing and its opposite mean the same. The longitude is not folded: it lies between 0
/// and 360. Two bearings along one great circle give latitude 0, longitude 0.
GeoPoint CalcCrossing(double dLon1, double dLat1, double dDir1, double dLon2, double dLat2, double dDir2);

/// A place on the map's bitmap, in pixels, y upwards.
struct MapPoint {
    double dX = 0;
    double dY = 0;
};

/// Where two bearing lines cross on the plane. Parallel lines cross far outside every map.
MapPoint CalcCrossingFlat(double dX1, double dY1, double dDir1, double dX2, double dY2, double dDir2);

/// The side of the map's bitmap, in pixels.
inline constexpr double MapSide = 557;

/// The map's projection: where a place lies on a bitmap of MapSide pixels a side with the centre at
/// (`dMapLon`, `dMapLat`) and `dMapRadius` kilometres from there to the edge. Places beyond the edge get
/// coordinates outside the bitmap, those farther than a quarter of the Earth's circumference (-1, -1). The
/// longitudes may lie either side of 180. A radius of 0 raises DivisionByZero, or Overflow at the centre.
MapPoint CalcMapXY(double dMapLon, double dMapLat, double dMapRadius, double dLon, double dLat);

/// The angle between two bearings, 0 to 180.
double CalcAngleDiff(double a, double b);

/// True when two angles between lines, each folded into 0 to 90, are both at least `dLimit`.
bool CalcAnglesWide(double a, double b, double dLimit);

}  // namespace veltrix
