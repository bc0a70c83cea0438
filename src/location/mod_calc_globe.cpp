#include "location/mod_calc_globe.h"

#include <algorithm>
#include <cmath>
#include <numbers>

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

/// A vector in the frame of the crossing: x towards 90 degrees east on the equator, y towards 180, z north.
struct Vector {
    double x = 0;
    double y = 0;
    double z = 0;

    Vector operator-() const { return {-x, -y, -z}; }
};

double DistanceBetween(const Vector& one, const Vector& other) {
    const Vector way{one.x - other.x, one.y - other.y, one.z - other.z};
    return std::sqrt(way.x * way.x + way.y * way.y + way.z * way.z);
}

/// A place and a bearing there, in radians of CalcDegrees.
struct Sight {
    Sight(double dLon, double dLat, double dDir)
        : lon(dLon / CalcDegrees), lat(dLat / CalcDegrees), d((dDir + 90) / CalcDegrees) {}

    Vector Place() const {
        return {std::sin(lon) * std::cos(lat), -std::cos(lon) * std::cos(lat), std::sin(lat)};
    }
    /// The pole of the great circle of the bearing.
    Vector Pole() const {
        return {std::cos(lon) * std::sin(d) - std::sin(lat) * std::sin(lon) * std::cos(d),
                std::sin(lat) * std::cos(lon) * std::cos(d) + std::sin(lon) * std::sin(d),
                std::cos(d) * std::cos(lat)};
    }

    double lon;
    double lat;
    double d;
};

/// The unit vector perpendicular to both poles, z not negative; the zero vector for one and the same circle.
Vector CommonPointOf(const Vector& one, const Vector& other) {
    const double u = one.z * other.y - other.z * one.y;
    const double v = one.x * other.y - other.x * one.y;
    const double w = other.x * one.z - one.x * other.z;
    if (v == 0) return {};
    const double z = std::sqrt(1 / (1 + u / v * (u / v) + w / v * (w / v)));
    return {-(u / v) * z, w / v * z, z};
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

GeoPoint CalcCrossing(double dLon1, double dLat1, double dDir1, double dLon2, double dLat2, double dDir2) {
    const Sight one(dLon1, dLat1, dDir1);
    const Sight other(dLon2, dLat2, dDir2);
    const auto fromBoth = [&](const Vector& point) {
        return DistanceBetween(point, one.Place()) + DistanceBetween(point, other.Place());
    };
    Vector point = CommonPointOf(one.Pole(), other.Pole());
    if (fromBoth(-point) < fromBoth(point)) point = -point;

    const double r = SineOf(point.z);
    const double p = r != 0 ? -point.y / r : 0;
    const double q = r != 0 ? point.x / r : 0;
    GeoPoint crossing{CalcAtan2(p, q) * CalcDegrees, CalcAtan2(r, point.z) * CalcDegrees};
    if (crossing.dLat > 180) crossing.dLat -= 360;
    return crossing;
}

MapPoint CalcCrossingFlat(double dX1, double dY1, double dDir1, double dX2, double dY2, double dDir2) {
    constexpr double Degree = std::numbers::pi / 180;  // true pi, here alone
    constexpr double NotZero = 0.000001;
    const double a1 = std::tan((90 - dDir1) * Degree);
    const double b1 = dY1 - a1 * dX1;
    const double a2 = std::tan((90 - dDir2) * Degree);
    const double b2 = dY2 - a2 * dX2;
    const double d = a1 - a2;
    const double x = (b2 - b1) / (d != 0 ? d : NotZero);
    const double dY = a1 * x + b1;
    return {(dY - b1) / (a1 != 0 ? a1 : NotZero), dY};
}

double CalcAngleDiff(double a, double b) {
    const double difference = CalcModulo(a - b, 360);
    return difference > 180 ? 360 - difference : difference;
}

bool CalcAnglesWide(double a, double b, double dLimit) {
    const auto isWide = [dLimit](double angle) {
        const double line = CalcModulo(angle, 180);
        return CalcModulo(line > 90 ? 180 - line : line, 180) >= dLimit;
    };
    return isWide(a) && isWide(b);
}

}  // namespace veltrix
