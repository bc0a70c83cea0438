// The sectors of the map, against the plain loop over all stations.

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

#include "bench/plain_sectors.h"
#include "location/map_sector.h"
#include "support/plain_glyphs.h"

namespace veltrix {
namespace {

/// Stations on and around a map of `side` pixels.
std::vector<MapPoint> StationsAround(int count, double side, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<> place(-side / 4, side * 5 / 4);
    std::vector<MapPoint> stations;
    for (int i = 0; i < count; ++i) stations.push_back({place(random), place(random)});
    return stations;
}

TEST(Sectors, GoToTheStationsThatThePlainLoopFinds) {
    constexpr double Nowhere = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char* sky;
        MapPoint home;
        std::vector<MapPoint> stations;
    } cases[] = {
        {"none", {50, 60}, {}},
        {"one", {50, 60}, {{70, 20}}},
        {"hundred", {61.23, 70.1}, StationsAround(100, 157, 2)},
        {"on whole pixels", {60, 70}, {{60, 90}, {90, 70}, {30, 40}, {0, 0}, {156, 112}}},
        {"one place twice", {50, 60}, {{70, 20}, {20, 20}, {70, 20}, {20, 20}}},
        {"at home", {50, 60}, {{50, 60}, {120, 30}, {50, 60}}},
        {"in line with home", {50, 60}, {{60, 70}, {100, 110}, {40, 50}, {60.5, 60}, {0, 10}}},
        {"neighbours of home", {50, 60}, {{50 + 1e-9, 60}, {50, 60 - 1e-12}, {50.2, 60.1}, {49.6, 60.4}}},
        {"home off the map", {-300, 900}, StationsAround(9, 157, 5)},
        {"far", {50, 60}, {{-2e4, 3e5}, {4e6, 1}, {1e8, -1e8}, {3e5, 3e5}}},
        {"beyond measure", {50, 60}, {{1e200, 5}, {70, 20}, {1e12, 1e12}, {-1, -1}}},
        {"nowhere", {50, 60}, {{70, 20}, {Nowhere, 3}, {20, 20}}},
        {"home nowhere", {Nowhere, 60}, {{3, 4}, {70, 20}}},
    };
    for (const auto& c : cases) {
        constexpr int Width = 157, Height = 113;
        MapSector sectors(Width, Height);
        sectors.Find({1, 2}, StationsAround(12, Width, 6), [] {});  // leaves no trace
        sectors.Find(c.home, c.stations, [] {});
        const std::vector<std::uint8_t> expected = PlainSectors(Width, Height, c.home, c.stations);
        int wrong = 0;
        for (int x = 0; x < Width; ++x)
            for (int y = 0; y < Height; ++y)
                wrong += sectors.Winner(x, y) != expected[static_cast<std::size_t>(x * Height + y)];
        EXPECT_EQ(wrong, 0) << c.sky;
    }
}

/// Nine stations in a row, each of which is the best somewhere. What drains the blocks moves them.
TEST(Sectors, AddAQuarterOfTheirColour) {
    constexpr int Side = 91;
    constexpr ColourValue Quarters[] = {0,        0x000020, 0x002000, 0x200000,
                                        0x002020, 0x200020, 0x202000, 0x202020};
    std::vector<MapPoint> stations;
    for (int i = 0; i < 9; ++i) stations.push_back({5.0 + 10 * i, 45});
    MapSector sectors(Side, Side);
    int drained = 0;
    sectors.Find({45, -300}, stations, [&] { stations[static_cast<std::size_t>(++drained % 9)] = {}; });
    EXPECT_EQ(drained, 10);  // columns 0 to 90
    PlainGlyphs glyphs;
    Surface map(Side, Side, glyphs, {0, 0, Side, Side});
    constexpr ColourValue Under = Rgb(240, 250, 255);  // carries, and out of the upper end
    for (int x = 0; x < Side; ++x) map.Line(x, 0, x, Side - 1, Under);
    sectors.Tint(map);
    for (int x = 0; x < Side; ++x) {
        EXPECT_EQ(map.Point(x, 0), Under) << x;
        for (int y = 1; y < Side; ++y)
            ASSERT_EQ(map.Point(x, Side - y), (Under + Quarters[sectors.Winner(x, y) % 8]) % 0x1000000) << x;
    }
    for (int i = 0; i < 9; ++i) EXPECT_EQ(sectors.Winner(5 + 10 * i, 45), i + 1);
}

}  // namespace
}  // namespace veltrix
