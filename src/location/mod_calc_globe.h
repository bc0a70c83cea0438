#pragma once
// ModCalcGlobe: distances and bearings between places on the globe. Plain functions without state.
//
// Angles are degrees: latitude positive north, longitude positive east, bearings clockwise from north.
// Constants are deliberately what they are, wrong digits included: the calibration of all stations rests on
// them.

namespace veltrix {

/// The great-circle distance between two places, in the unit of `dRadius`; 0 stands for the Earth's
/// equatorial radius in kilometres. Spherical law of cosines: two places nearer than some metres read as one.
double CalcDistance(double dLat1, double dLon1, double dLat2, double dLon2, double dRadius = 0);

/// The bearings at both ends of a great circle.
struct BearingPair {
    double dBearing1 = 0;  ///< from place 1 to place 2
    double dBearing2 = 0;  ///< from place 2 to place 1
};

/// Bearings between two places, -180 to 180, east positive, from the spherical triangle with the pole. Equal
/// places give 90 and -90.
BearingPair CalcBearings(double dLat1, double dLon1, double dLat2, double dLon2);

}  // namespace veltrix
