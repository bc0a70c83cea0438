// Coastlines and the maps painted from them.

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "cartography/map_painter.h"
#include "cartography/map_projection.h"
#include "common/arithmetic.h"
#include "platform/qt/resources.h"
#include "support/number_raised_by.h"

namespace veltrix {
namespace {

const Coastlines& Earth() {
    static const Coastlines earth(resources::CoastlineBytes());
    return earth;
}

/// Leaves a map without labels.
struct NoGlyphs final : Glyphs {
    GlyphMask Render(std::string_view) override { return {0, 14, {}}; }
};

Bitmap MapOf(const MapPlace& place) {
    NoGlyphs glyphs;
    return PaintMap(place, Earth(), glyphs);
}

ColourValue PixelAt(const Bitmap& map, int x, int y) {
    return map.pixels.at(static_cast<std::size_t>(y * map.width + x));
}

int RedAt(const Bitmap& map, int x, int y) {
    return PixelAt(map, x, y) & 255;
}

int BlueAt(const Bitmap& map, int x, int y) {
    return PixelAt(map, x, y) >> 16;
}

/// Where a strike at a place is painted.
std::pair<int, int> StrikeAt(const MapPlace& place, double longitude, double latitude) {
    const MapPoint fix =
        CalcMapXY(place.MapLongitude, place.MapLatitude, place.MapRadius, longitude, latitude);
    return {RoundToLong(fix.dX), RoundToLong(MapSide - fix.dY)};
}

bool IsOnMap(std::pair<int, int> pixel) {
    return pixel.first >= 0 && pixel.second >= 0 && pixel.first < MapSize && pixel.second < MapSize;
}

constexpr int CoastBlue = 50;  // no blue is above it but that of coasts and some lines that cross

/// Whether most pixels about one have the colour of land, lines left out.
bool LooksLikeLand(const Bitmap& map, std::pair<int, int> pixel) {
    int land = 0;
    for (int x = pixel.first - 2; x <= pixel.first + 2; ++x) {
        for (int y = pixel.second - 2; y <= pixel.second + 2; ++y) {
            if (!IsOnMap({x, y}) || BlueAt(map, x, y) > CoastBlue) continue;
            land += BlueAt(map, x, y) - RedAt(map, x, y) < 9 ? 1 : -1;
        }
    }
    return land > 0;
}

struct Site {
    const char* name;
    double latitude, longitude;
    bool isLand;
    bool isSmall = false;  ///< smaller than what is looked at on a map of half the Earth
};

constexpr Site Sites[] = {
    {"Ardennes", 50, 5.5, true},
    {"Biscay", 45.5, -5, false},
    {"Adriatic", 43, 15.2, false},
    {"Sardinia", 40, 9, true},
    {"Caspian Sea", 42, 50.5, false},
    {"Sahara", 24, 5, true},
    {"Gulf of Guinea", 0, 0, false},
    {"south of Cape Agulhas", -36.5, 20, false},
    {"Cape Horn's sea", -57.5, -67, false},
    {"Borneo", 1, 114, true},
    {"Fiji", -17.8, 178, true, true},
    {"east of Fiji", -18, -179, false},
    {"sea on the date line", -30, 180, false},
    {"Tasman Sea", -38, 162, false},
    {"Chukotka's east", 67, -175, true},
    {"Chukotka on the date line", 67.5, 180, true},
    {"Wrangel Island", 71.2, -179.6, true, true},
    {"Hawaii's sea", 22, -150, false},
    {"Spitsbergen", 78.9, 17.5, true, true},
    {"Greenland", 73.5, -37, true},
    {"North Pole", 89.98, 0, false},
    {"South Pole", -89.98, 100, true},
    {"Ross Ice", -84.8, 179.9, true},
    {"Queen Maud Land", -75, 5, true},
    {"Southern Ocean", -60, 20, false},
    {"Kansas", 38.5, -98, true},
    {"Hudson Bay", 60, -86, false},
};

TEST(Map, LandIsLandAndSeaIsSea) {
    for (const Site& site : Sites)
        for (const double turn : {-360.0, 0.0, 360.0})
            EXPECT_EQ(Earth().IsLand(site.longitude + turn, site.latitude), site.isLand) << site.name;

    // Radius, longitude, latitude: the default, the date line, islands, the equator, both poles, round
    // numbers on which coasts have points, all that a map can show, and next to nothing.
    constexpr MapPlace Places[] = {
        {},
        {3000, 178, -30},
        {3000, 180, 65},
        {3000, -180, -15},
        {5000, 0, 0},
        {2000, 15, 78},
        {2500, 100, MostMapLatitude},
        {2500, -100, -MostMapLatitude},
        {3000, -100, 40},
        {MostMapRadius, 8, 50},
        {LeastMapRadius, 5.3, 50.1},
    };
    for (const MapPlace& place : Places) {
        const Bitmap map = MapOf(place);
        ASSERT_EQ(map.pixels.size(), 557U * 557U);
        const MapProjection projection(place);
        int seen = 0;
        for (const Site& site : Sites) {
            const MapPixel at = projection.At(site.longitude, site.latitude);
            if (std::abs(at.x) > MapSide || std::abs(at.y) > MapSide) continue;
            const std::pair<int, int> pixel{RoundToLong(at.x), RoundToLong(at.y)};
            if (!IsOnMap(pixel)) continue;
            ++seen;
            if (place.MapRadius > 5000 && site.isSmall) continue;
            EXPECT_EQ(LooksLikeLand(map, pixel), site.isLand)
                << site.name << " around " << place.MapLatitude << ' ' << place.MapLongitude;
        }
        EXPECT_GT(seen, 0) << place.MapLatitude << ' ' << place.MapLongitude;
    }
}

TEST(Map, AStrikeAtACoastHitsTheLineOfTheCoast) {
    for (const MapPlace& place : {MapPlace{}, MapPlace{600, 9.1, 48.2}, MapPlace{3000, 178.3, -30}}) {
        const Bitmap map = MapOf(place);
        int points = 0;
        int hits = 0;
        int nearMisses = 0;
        for (const GridLine& coast : Earth().Coasts()) {
            for (const GridPoint& point : coast) {
                const auto [x, y] = StrikeAt(place, point.lon / 100.0, point.lat / 100.0);
                if (!IsOnMap({x, y}) || !IsOnMap({x + 4, y + 4})) continue;
                ++points;
                hits += BlueAt(map, x, y) > CoastBlue ? 1 : 0;
                nearMisses += BlueAt(map, x + 4, y + 4) > CoastBlue ? 1 : 0;
            }
        }
        EXPECT_GT(points, 300);
        EXPECT_EQ(hits, points) << place.MapLatitude;
        EXPECT_LT(nearMisses, points * 7 / 10) << "all the map is bright";
    }
    EXPECT_GT(Earth().Borders().size(), 300U);
}

TEST(Map, TheGroundIsDarkEnoughForOldStrikes) {
    const Bitmap map = MapOf({});
    int dark = 0;
    for (int x = 0; x < MapSize; ++x)
        for (int y = 0; y < MapSize; ++y) {
            EXPECT_LT(RedAt(map, x, y), 128);
            dark += RedAt(map, x, y) < 40 ? 1 : 0;
        }
    EXPECT_GT(dark, MapSize * MapSize * 9 / 10);
}

TEST(Map, TheProjectionGoesOnBeyondAQuarterOfTheEarth) {
    for (const MapPlace& place :
         {MapPlace{9000, 4.4, 50.9}, MapPlace{9000, 0, 0}, MapPlace{9000, -70, -89}}) {
        const MapProjection projection(place);
        for (double bearing = 5; bearing < 360; bearing += 10) {
            MapPixel last = projection.At(place.MapLongitude, place.MapLatitude);
            for (double distance = 1; distance < 140; ++distance) {
                const GeoPoint to = projection.Around(distance, bearing);
                const MapPixel pixel = projection.At(to.dLon, to.dLat);
                const double step = std::hypot(pixel.x - last.x, pixel.y - last.y);
                EXPECT_NEAR(step, 3.44, 1.3) << place.MapLatitude << ' ' << bearing << ' ' << distance;
                last = pixel;
            }
        }
    }
}

TEST(Map, PlacesOfWhichThereIsNoMapAreRefused) {
    const double nan = std::nan("");
    for (const MapPlace& place :
         {MapPlace{49, 0, 0}, MapPlace{9001, 0, 0}, MapPlace{0, 0, 0}, MapPlace{nan, 0, 0},
          MapPlace{2000, 181, 0}, MapPlace{2000, nan, 0}, MapPlace{2000, 0, 90}, MapPlace{2000, 0, -89.99999},
          MapPlace{2000, 0, nan}})
        EXPECT_EQ(NumberRaisedBy([&] { MapOf(place); }), errors::InvalidCall) << place.MapRadius;
}

TEST(Coastlines, DamagedDataIsRefused) {
    const auto bytes = [](std::initializer_list<int> values) {
        std::vector<std::byte> all;
        for (const int value : values) all.push_back(static_cast<std::byte>(value));
        return all;
    };
    // One coast of the two points 0.01, 0 and 0.01, -0.01 and no border.
    const std::vector<std::byte> good = bytes({'V', 'X', 'C', '1', 1, 2, 2, 0, 0, 1, 0});
    EXPECT_EQ(Coastlines(good).Coasts(), (std::vector<GridLine>{{{1, 0}, {1, -1}}}));

    std::vector<std::vector<std::byte>> table = {
        bytes({'V', 'X', 'C', '2', 1, 2, 2, 0, 0, 1, 0}),                   // another format
        bytes({'V', 'X', 'C', '1', 1, 2, 2, 0, 0, 1, 0, 0}),                // too long
        bytes({'V', 'X', 'C', '1', 1, 1, 2, 0, 0}),                         // a line of one point
        bytes({'V', 'X', 'C', '1', 1, 0, 0}),                               // of none
        bytes({'V', 'X', 'C', '1', 255, 255, 255, 127, 2, 2, 0, 0, 1, 0}),  // many lines
        bytes({'V', 'X', 'C', '1', 1, 255, 255, 127, 2, 0, 0, 1, 0}),       // many points
        bytes(
            {'V', 'X', 'C', '1', 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 1}),  // an endless number
        bytes({'V', 'X', 'C', '1', 1, 2, 0xC2, 0x99, 2, 0, 0, 1, 0}),                    // 180.01 east
        bytes({'V', 'X', 'C', '1', 1, 2, 0, 0xA2, 0x8D, 1, 0, 1, 0}),                    // 90.01 north
    };
    for (std::size_t length = 0; length < good.size(); ++length)
        table.emplace_back(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length));
    for (std::size_t i = 0; i < table.size(); ++i)
        EXPECT_EQ(NumberRaisedBy([&] { Coastlines{table[i]}; }), errors::Internal) << "case " << i;
}

}  // namespace
}  // namespace veltrix
