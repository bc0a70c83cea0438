#include "cartography/map_projection.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace veltrix {

namespace {

constexpr double Radian = 180 / std::numbers::pi;
constexpr double EquatorRadius = 6378.137;  // km
constexpr double Flattening = 1 / 298.257223563;
constexpr double Middle = MapSide / 2;

// Longer than any piece of a line that is told near from far as a whole, so that nothing comes onto the map
// unnoticed.
constexpr double Margin = 1.5;
constexpr double LongestStep = 0.5;
// Places farther away lie all around the map, and the lines between them right across it.
constexpr double MostReach = 150;

constexpr double LongestPiece = 8;  // pixels

}  // namespace

MapProjection::MapProjection(const MapPlace& place)
    : place_(place),
      reach_(std::min(MostReach, place.MapRadius * std::numbers::sqrt2 / EquatorRadius * Radian + Margin)),
      sinLatitude_(std::sin(place.MapLatitude / Radian)),
      cosLatitude_(std::cos(place.MapLatitude / Radian)),
      leastCosine_(std::cos(reach_ / Radian)) {}

MapPixel MapProjection::At(double longitude, double latitude) const {
    // To the bit on the centre's meridian CalcMapXY takes south for north, which no strike is likely to hit,
    // but the round degrees of coasts and lines do.
    constexpr double Aside = 1e-9;
    if (longitude == place_.MapLongitude) longitude += Aside;
    // The sphere that the ellipsoid is reduced to.
    const double own = std::atan((1 - Flattening) * std::tan(place_.MapLatitude / Radian));
    const double other = std::atan((1 - Flattening) * std::tan(latitude / Radian));
    const double turn = (longitude - place_.MapLongitude) / Radian;
    const double cosine = std::sin(own) * std::sin(other) + std::cos(own) * std::cos(other) * std::cos(turn);
    constexpr double WithinAQuarter = 1e-6;
    if (cosine > WithinAQuarter) {
        const MapPoint point =
            CalcMapXY(place_.MapLongitude, place_.MapLatitude, place_.MapRadius, longitude, latitude);
        return {point.dX, MapSide - point.dY};
    }
    const double east = std::cos(other) * std::sin(turn);
    const double north = std::cos(own) * std::sin(other) - std::sin(own) * std::cos(other) * std::cos(turn);
    const double sine = std::hypot(east, north);
    const double distance = Middle * EquatorRadius * std::atan2(sine, cosine) / place_.MapRadius;
    if (sine == 0) return {Middle, Middle - distance};
    return {Middle + distance * east / sine, Middle - distance * north / sine};
}

bool MapProjection::IsNear(double longitude, double latitude) const {
    const double turn = (longitude - place_.MapLongitude) / Radian;
    return sinLatitude_ * std::sin(latitude / Radian) +
               cosLatitude_ * std::cos(latitude / Radian) * std::cos(turn) >
           leastCosine_;
}

GeoPoint MapProjection::Around(double distance, double bearing) const {
    const double arc = distance / Radian;
    const double sine =
        sinLatitude_ * std::cos(arc) + cosLatitude_ * std::sin(arc) * std::cos(bearing / Radian);
    const double turn = std::atan2(std::sin(bearing / Radian) * std::sin(arc) * cosLatitude_,
                                   std::cos(arc) - sinLatitude_ * sine);
    return {place_.MapLongitude + turn * Radian, std::asin(std::clamp(sine, -1.0, 1.0)) * Radian};
}

MapPath::Stop MapPath::StopAt(double longitude, double latitude) const {
    Stop stop{longitude, latitude, projection_.IsNear(longitude, latitude), {}};
    if (stop.isNear) stop.pixel = projection_.At(longitude, latitude);
    return stop;
}

void MapPath::MoveTo(double longitude, double latitude) {
    last_ = StopAt(longitude, latitude);
}

void MapPath::LineTo(double longitude, double latitude) {
    const Stop from = last_;
    const double longest = std::max(std::abs(longitude - from.longitude), std::abs(latitude - from.latitude));
    const int steps = std::max(1, static_cast<int>(std::ceil(longest / LongestStep)));
    for (int step = 1; step <= steps; ++step) {
        const double part = static_cast<double>(step) / steps;
        // The last one to the bit, where other lines may meet this one.
        const Stop next = step == steps ? StopAt(longitude, latitude)
                                        : StopAt(std::lerp(from.longitude, longitude, part),
                                                 std::lerp(from.latitude, latitude, part));
        if (last_.isNear && next.isNear) Draw(last_, next);
        last_ = next;
    }
}

void MapPath::Draw(const Stop& from, const Stop& to) {
    const double length = std::hypot(to.pixel.x - from.pixel.x, to.pixel.y - from.pixel.y);
    const int pieces = std::max(1, static_cast<int>(std::ceil(length / LongestPiece)));
    MapPixel last = from.pixel;
    for (int piece = 1; piece < pieces; ++piece) {
        const double part = static_cast<double>(piece) / pieces;
        const MapPixel next = projection_.At(std::lerp(from.longitude, to.longitude, part),
                                             std::lerp(from.latitude, to.latitude, part));
        piece_(last, next);
        last = next;
    }
    piece_(last, to.pixel);
}

}  // namespace veltrix
