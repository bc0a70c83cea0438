// Crossings of bearings, and the map's projection, against values worked out elsewhere.

#include <gtest/gtest.h>

#include <algorithm>

#include "common/failure.h"
#include "location/mod_calc_globe.h"
#include "support/number_raised_by.h"

namespace veltrix {
namespace {

// The expected values of these tables come from the same formulas, written anew and worked out in 40 digits.
TEST(CalcCrossing, AgreesWithValuesWorkedOutElsewhere) {
    const struct {
        double lon1, lat1, dir1, lon2, lat2, dir2;
        GeoPoint crossing;
    } cases[] = {
        {4.43579, 50.93272, 60, 13.4, 52.5, 200, {14.2503708589176, 53.8745883357118}},
        {4.43579, 50.93272, 240, 13.4, 52.5, 200, {14.2503769658381, 53.8745978734934}},  // backwards
        {-58.4, -34.6, 45, -70.6, -33.4, 80, {307.512571597415, -29.2941102446627}},
        {18.4, -33.9, 30, 31, -29.8, 120, {23.5567598193207, -25.7194268434004}},
        {-71, 42.3, 250, -80.2, 25.8, 330, {272.305757404359, 36.1373716278031}},
        {179, -17.7, 60, -175.2, -21.1, 10, {186.164062827219, -13.5534418392064}},  // beyond the date line
        {20, 10, 135, 40, 12, 225, {29.0477802998344, 0.827835665223972}},
        {5, 50, 30, 5, 50, 30, {0, 0}},  // one line only: nowhere
    };
    for (const auto& c : cases) {
        const GeoPoint found = CalcCrossing(c.lon1, c.lat1, c.dir1, c.lon2, c.lat2, c.dir2);
        EXPECT_NEAR(found.dLon, c.crossing.dLon, 1e-9) << c.lon1 << " " << c.dir1;
        EXPECT_NEAR(found.dLat, c.crossing.dLat, 1e-9) << c.lon1 << " " << c.dir1;
    }
}

TEST(CalcCrossingFlat, CrossesLinesOnThePlane) {
    const struct {
        double x1, y1, dir1, x2, y2, dir2, x, y;
    } cases[] = {
        {100, 100, 45, 300, 100, 315, 200, 200},
        {278, 278, 30, 400, 300, 100, 300.800460115243, 317.491555355548},
        {100, 0, 45, 0, 0, 45, 1e8, 1e8 - 100},  // parallel
        {50, 20, 90, 100, 100, 30, 0, 20},       // the first one level: its x is lost
    };
    for (const auto& c : cases) {
        const MapPoint found = CalcCrossingFlat(c.x1, c.y1, c.dir1, c.x2, c.y2, c.dir2);
        EXPECT_NEAR(found.dX, c.x, 1e-9 * std::max(1000.0, c.x)) << c.dir1 << " " << c.dir2;
        EXPECT_NEAR(found.dY, c.y, 1e-9 * std::max(1000.0, c.y)) << c.dir1 << " " << c.dir2;
    }
}

TEST(CalcMapXY, AgreesWithValuesWorkedOutElsewhere) {
    constexpr double Lon = 4.43579;
    constexpr double Lat = 50.93272;
    const struct {
        double mapLon, mapLat, radius, lon, lat;
        MapPoint point;
    } cases[] = {
        {Lon, Lat, 2000, Lon, Lat, {278.5, 278.5}},
        {Lon, Lat, 2000, 13.4, 52.5, {363.067109549212, 307.643409644292}},
        {Lon, Lat, 2000, -9.1, 38.7, {113.520750201739, 104.168230168763}},
        {Lon, Lat, 2000, 364.43579, 60, {278.500831290343, 419.070846871532}},  // a turn further
        {Lon, Lat, 2000, Lon, 40, {278.499915404839, 447.7055152267}},          // due south: mirrored
        {0, 0, 5000, -30, -20, {100.490507123474, 149.928213540336}},
        {179.5, -18, 2000, -170, -25, {426.857303109464, 167.075757222432}},
        {179.5, -18, 2000, 190, -25, {426.85889877493, 167.075651783546}},
        {Lon, Lat, 9000, 80, -10, {570.337182513599, 186.817878458409}},  // nearly a quarter round
        {Lon, Lat, 9000, -170, -40, {-1, -1}},                            // beyond a quarter
        {Lon, Lat, -2000, 13.4, 52.5, {-1, -1}},
    };
    for (const auto& c : cases) {
        const MapPoint found = CalcMapXY(c.mapLon, c.mapLat, c.radius, c.lon, c.lat);
        EXPECT_NEAR(found.dX, c.point.dX, 1e-8) << c.lon << " " << c.lat;
        EXPECT_NEAR(found.dY, c.point.dY, 1e-8) << c.lon << " " << c.lat;
    }
    EXPECT_EQ(NumberRaisedBy([] { CalcMapXY(Lon, Lat, 0, 13.4, 52.5); }), errors::DivisionByZero);
}

TEST(CalcAnglesWide, FoldsAnglesBetweenLinesAndTakesTheLimitItself) {
    const struct {
        double a, b, difference, limit;
        bool isWide;
    } cases[] = {
        {350, 10, 20, 20, true}, {10, 350, 20, 20.001, false}, {-170, 175, 15, 10, true},
        {0, 175, 175, 5, true},  {0, 175, 175, 5.5, false},    {90, 270, 180, 0.5, false},
        {123, 123, 0, 0, true},  {-90, 0, 90, 90, true},
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(CalcAngleDiff(c.a, c.b), c.difference, 1e-12) << c.a << " " << c.b;
        EXPECT_EQ(CalcAnglesWide(c.difference, 90, c.limit), c.isWide) << c.a << " " << c.b;
        EXPECT_EQ(CalcAnglesWide(90, c.difference, c.limit), c.isWide) << c.a << " " << c.b;
    }
}

}  // namespace
}  // namespace veltrix
