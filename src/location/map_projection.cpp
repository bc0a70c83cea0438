// The map's projection, CalcMapXY().

#include <cmath>

#include "common/arithmetic.h"
#include "common/calc_angles.h"
#include "location/mod_calc_globe.h"

namespace veltrix {

namespace {

// The ellipsoid, WGS 84: axes in metres and flattening.
constexpr double a = 6378137;
constexpr double f = 1 / 298.257223563;
constexpr double b = (1 - f) * a;

constexpr double HalfSide = MapSide / 2;

/// How one place lies to another.
struct Leg {
    double s = 0;  ///< metres, of the tangent of the arc: negative beyond a quarter of the circumference
    double t = 0;  ///< direction in radians, anticlockwise from east
};

/// The inverse formula of Vincenty (Survey Review 23, 1975), broken off after its first pass. The sigma in
/// the new lambda deliberately is the complement of the arc, and the distance that of its tangent, which the
/// caller undoes.
Leg LegBetween(double dLon1, double dLat1, double dLon2, double dLat2) {
    constexpr double Degree = CalcPi / 180;
    const double L = dLon2 * Degree - dLon1 * Degree;
    const double U1 = std::atan((1 - f) * std::tan(dLat1 * Degree));
    const double U2 = std::atan((1 - f) * std::tan(dLat2 * Degree));
    const double sinU1 = std::sin(U1);
    const double cosU1 = std::cos(U1);
    const double sinU2 = std::sin(U2);
    const double cosU2 = std::cos(U2);

    const double east = cosU2 * std::sin(L);
    const double north = cosU1 * sinU2 - sinU1 * cosU2 * std::cos(L);
    const double sinSigma = std::sqrt(east * east + north * north);
    const double cosSigma = sinU1 * sinU2 + cosU1 * cosU2 * std::cos(L);
    const double sigma = CalcAtan2(sinSigma, cosSigma);
    const double T = cosSigma != 0 ? sinSigma / cosSigma : 0;
    const double sinAlpha = sinSigma != 0 ? cosU1 * cosU2 * std::sin(L) / sinSigma : 0;
    const double cosSqAlpha = 1 - sinAlpha * sinAlpha;
    const double cos2SigmaM = cosSqAlpha != 0 ? cosSigma - 2 * sinU1 * sinU2 / cosSqAlpha : 0;
    const double C = f / 16 * cosSqAlpha * (4 + f * (4 - 3 * cosSqAlpha));
    const double bent = -1 + 2 * cos2SigmaM * cos2SigmaM;
    const double lambda =
        L + (1 - C) * f * sinAlpha * (sigma + C * sinSigma * (cos2SigmaM + C * cosSigma * bent));

    const double uSq = cosSqAlpha * (a * a - b * b) / (b * b);
    const double A = 1 + uSq / 16384 * (4096 + uSq * (-768 + uSq * (320 - 175 * uSq)));
    const double B = uSq / 1024 * (256 + uSq * (-128 + uSq * (74 - 47 * uSq)));
    const double deltaSigma =
        B * sinSigma *
        (cos2SigmaM + B / 4 *
                          (cosSigma * bent - B / 6 * cos2SigmaM * (-3 + 4 * sinSigma * sinSigma) *
                                                 (-3 + 4 * cos2SigmaM * cos2SigmaM)));
    return {b * A * (T - deltaSigma),
            CalcAtan2(cosU2 * std::sin(lambda), cosU1 * sinU2 - sinU1 * cosU2 * std::cos(lambda))};
}

}  // namespace

MapPoint CalcMapXY(double dMapLon, double dMapLat, double dMapRadius, double dLon, double dLat) {
    const Leg leg = LegBetween(dMapLon, dMapLat, dLon, dLat);
    const double rho = Divide(a * std::atan(leg.s / a) / 1000, dMapRadius);
    if (rho < 0) return {-1, -1};
    return {MapSide - (HalfSide - HalfSide * rho * std::cos(leg.t)),
            MapSide - (HalfSide - HalfSide * rho * std::sin(leg.t))};
}

}  // namespace veltrix
