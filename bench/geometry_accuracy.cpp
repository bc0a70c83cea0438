// How far the functions of the globe lie from exact geodesics of WGS 84. Prints the tables of
// docs/accuracy.md.

#include <GeographicLib/GeodesicExact.hpp>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <string_view>
#include <vector>

#include "location/mod_calc_globe.h"

using namespace veltrix;

namespace {

constexpr double Latitudes[] = {0, 30, 50.93272, 60, 75};
constexpr int BearingStep = 5;

struct Course {
    double km = 0;
    double bearing = 0;  ///< at the start
};

const GeographicLib::GeodesicExact& Globe() {
    return GeographicLib::GeodesicExact::WGS84();
}

GeoPoint PlaceAt(GeoPoint from, double bearing, double km) {
    GeoPoint place;
    Globe().Direct(from.dLat, from.dLon, bearing, km * 1000, place.dLat, place.dLon);
    return place;
}

Course CourseTo(GeoPoint from, GeoPoint to) {
    double metres = 0;
    double atStart = 0;
    double atEnd = 0;
    Globe().Inverse(from.dLat, from.dLon, to.dLat, to.dLon, metres, atStart, atEnd);
    return {metres / 1000, atStart};
}

/// The bearing that a station has of a place, as CalcCrossing() takes it.
double BearingOf(GeoPoint from, GeoPoint to) {
    const double bearing = CourseTo(from, to).bearing;
    return bearing < 0 ? bearing + 360 : bearing;
}

/// An angle brought into -180 to 180.
double Folded(double degrees) {
    return std::remainder(degrees, 360);
}

template <typename Row>
void PrintTable(const char* title, const char* columns, const std::vector<double>& rows, Row&& row) {
    std::printf("\n%s\n\n| km | %s |\n|---:|", title, columns);
    for (std::size_t i = 0; i <= std::size(std::string_view(columns)); ++i)
        if (i == std::size(std::string_view(columns)) || columns[i] == '|') std::printf("---:|");
    std::printf("\n");
    for (const double km : rows) {
        std::printf("| %g |", km);
        row(km);
        std::printf("\n");
    }
}

constexpr const char* LatitudeColumns = "0° | 30° | 51° | 60° | 75°";

void PrintDistances() {
    PrintTable("CalcDistance: least and greatest error, percent, by distance and latitude", LatitudeColumns,
               {0.01, 0.1, 1, 10, 100, 500, 1000, 2000, 5000, 10000}, [](double km) {
                   for (const double latitude : Latitudes) {
                       double least = 1e9;
                       double greatest = -1e9;
                       for (int bearing = 0; bearing < 360; bearing += BearingStep) {
                           const GeoPoint from{4, latitude};
                           const GeoPoint to = PlaceAt(from, bearing, km);
                           const double error =
                               100 * (CalcDistance(from.dLat, from.dLon, to.dLat, to.dLon) / km - 1);
                           least = std::min(least, error);
                           greatest = std::max(greatest, error);
                       }
                       std::printf(" %+.2f to %+.2f |", least, greatest);
                   }
               });
}

void PrintBearings() {
    PrintTable("CalcBearings: greatest error, degrees, by distance and latitude", LatitudeColumns,
               {1, 10, 100, 500, 1000, 2000, 5000, 10000}, [](double km) {
                   for (const double latitude : Latitudes) {
                       double greatest = 0;
                       for (int bearing = 0; bearing < 360; bearing += BearingStep) {
                           const GeoPoint from{4, latitude};
                           const GeoPoint to = PlaceAt(from, bearing, km);
                           const double found =
                               CalcBearings(from.dLat, from.dLon, to.dLat, to.dLon).dBearing1;
                           greatest = std::max(greatest, std::abs(Folded(found - bearing)));
                       }
                       std::printf(" %.3f |", greatest);
                   }
               });
}

/// Two stations 700 km apart, the line between them running north-east, and strikes all around.
void PrintCrossings() {
    constexpr double HalfBase = 350;
    constexpr double LeastAngle = 10;
    PrintTable(
        "CalcCrossing: median and greatest error of position, km, by distance from the middle of two "
        "stations and its latitude",
        LatitudeColumns, {100, 200, 500, 1000, 2000, 3000}, [](double km) {
            for (const double latitude : Latitudes) {
                const GeoPoint middle{4, latitude};
                const GeoPoint one = PlaceAt(middle, 45, HalfBase);
                const GeoPoint other = PlaceAt(middle, 225, HalfBase);
                std::vector<double> errors;
                for (int bearing = 0; bearing < 360; ++bearing) {
                    const GeoPoint strike = PlaceAt(middle, bearing, km);
                    const double angle =
                        std::abs(Folded(2 * (BearingOf(strike, one) - BearingOf(strike, other)))) / 2;
                    if (angle < LeastAngle) continue;
                    const GeoPoint found = CalcCrossing(one.dLon, one.dLat, BearingOf(one, strike),
                                                        other.dLon, other.dLat, BearingOf(other, strike));
                    errors.push_back(CourseTo(strike, found).km);
                }
                std::ranges::sort(errors);
                std::printf(" %.2f, %.1f |", errors[errors.size() / 2], errors.back());
            }
        });
}

struct MapCentre {
    const char* name;
    GeoPoint place;
};

constexpr MapCentre Centres[] = {{"50.93272 N 4.43579 E", {4.43579, 50.93272}},
                                 {"0 N 25 E", {25, 0}},
                                 {"60 S 60 W", {-60, -60}},
                                 {"75 N 20 E", {20, 75}},
                                 {"18 S 179.5 E", {179.5, -18}}};

/// Greatest offset on a ring around the middle of a map, in pixels: whole, radial, along the ring.
struct Offset {
    double whole = 0;
    double radial = 0;
    double along = 0;
};

Offset OffsetOnRing(GeoPoint centre, double mapRadius, double km) {
    constexpr double Middle = MapSide / 2;
    Offset offset;
    // Off the meridian of the centre, on which places south of it are deliberately mirrored.
    for (double bearing = 0.5; bearing < 360; ++bearing) {
        const GeoPoint place = PlaceAt(centre, bearing, km);
        const MapPoint found = CalcMapXY(centre.dLon, centre.dLat, mapRadius, place.dLon, place.dLat);
        const double east = std::sin(bearing * std::numbers::pi / 180);
        const double north = std::cos(bearing * std::numbers::pi / 180);
        const double dX = found.dX - (Middle + Middle * km / mapRadius * east);
        const double dY = found.dY - (Middle + Middle * km / mapRadius * north);
        offset.whole = std::max(offset.whole, std::hypot(dX, dY));
        offset.radial = std::max(offset.radial, std::abs(dX * east + dY * north));
        offset.along = std::max(offset.along, std::abs(dX * north - dY * east));
    }
    return offset;
}

void PrintProjection() {
    std::printf(
        "\nCalcMapXY: greatest offset from the exact azimuthal equidistant position\n\n"
        "| centre | radius km | at half the radius: px, km | at the radius: px, km | "
        "outwards, px | along the ring, px |\n|---|---:|---:|---:|---:|---:|\n");
    for (const auto& [name, place] : Centres)
        for (const double radius : {500.0, 2000.0, 5000.0}) {
            const double kmPerPixel = radius / (MapSide / 2);
            const Offset half = OffsetOnRing(place, radius, radius / 2);
            const Offset edge = OffsetOnRing(place, radius, radius);
            std::printf("| %s | %g | %.2f, %.1f | %.2f, %.1f | %.2f | %.2f |\n", name, radius, half.whole,
                        half.whole * kmPerPixel, edge.whole, edge.whole * kmPerPixel, edge.radial,
                        edge.along);
        }
}

}  // namespace

int main() {
    PrintDistances();
    PrintBearings();
    PrintCrossings();
    PrintProjection();
    return 0;
}
