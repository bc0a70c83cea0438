#include "location/mod_calc_globe.h"

#include <algorithm>
#include <cmath>

#include "common/calc_angles.h"

namespace veltrix {

namespace {

constexpr double CalcTwoPi = 6.283187307;
constexpr double CalcDegrees = 57.2958;
constexpr double EquatorialRadiusKm = 6378137.0 / 1000;

/// The sine that belongs to a cosine, of an arc up to half a circle. A cosine that rounding has lifted above
/// 1 counts as 1.
double SineOf(double cosine) {
    return std::sqrt(std::max(1 - cosine * cosine, 0.0));
}

/// The angle at one end of the triangle, in radians: `a` is the colatitude there, `b` the one opposite.
double AngleAt(double a, double b, double c, double s) {
    const double divisor = s * std::sin(a);
    const double k = divisor != 0 ? (std::cos(b) - std::cos(a) * c) / divisor : 0;
    const double cosine = std::clamp(k, -1.0, 1.0);
    return CalcAtan2(cosine, SineOf(cosine));
}

}  // namespace

double CalcDistance(double dLat1, double dLon1, double dLat2, double dLon2, double dRadius) {
    const double lat1 = dLat1 / CalcDegrees;
    const double lon1 = dLon1 / CalcDegrees;
    const double lat2 = dLat2 / CalcDegrees;
    const double lon2 = dLon2 / CalcDegrees;
    const double c =
        std::sin(lat1) * std::sin(lat2) + std::cos(lat2) * std::cos(lat1) * std::cos(lon2 - lon1);
    return CalcAtan2(c, SineOf(c)) * (dRadius == 0 ? EquatorialRadiusKm : dRadius);
}

BearingPair CalcBearings(double dLat1, double dLon1, double dLat2, double dLon2) {
    constexpr double f = 180 / CalcPi;
    const double a1 = CalcPi / 2 - dLat1 / f;
    const double a2 = CalcPi / 2 - dLat2 / f;
    const double d = CalcModulo((dLon2 - dLon1) / f + CalcPi, CalcTwoPi) - CalcPi;
    const double c = std::sin(a2) * std::sin(a1) * std::cos(d) + std::cos(a1) * std::cos(a2);
    const double s = SineOf(c);
    BearingPair bearings{AngleAt(a1, a2, c, s) * f, AngleAt(a2, a1, c, s) * f};
    (d < 0 ? bearings.dBearing1 : bearings.dBearing2) *= -1;
    return bearings;
}

}  // namespace veltrix
