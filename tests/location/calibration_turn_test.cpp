// How far bearings turn when a strike is dragged over the map.

#include "location/calibration_turn.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "common/failure.h"
#include "support/number_raised_by.h"

namespace veltrix {
namespace {

/// A place on the screen, y downwards.
struct Pixel {
    double x;
    double y;
};

MarkOffset From(const Pixel& mark, const Pixel& place) {
    return OffsetFromMark(mark.x, mark.y, place.x, place.y);
}

/// Degrees clockwise from north in which `to` is seen from `from`.
double Bearing(const Pixel& from, const Pixel& to) {
    return std::atan2(to.x - from.x, from.y - to.y) * 180 / std::numbers::pi;
}

constexpr Pixel Home{100, 100};
constexpr Pixel Remote{300, 180};

TEST(CalibrationTurn, LetsBothBearingsMeetWhereTheStrikeIsDropped) {
    const Pixel press{220, 60};
    for (const Pixel drop : {Pixel{240, 50}, Pixel{220, 60}, Pixel{90, 400}, Pixel{350, 200}}) {
        for (const Pixel mark : {Home, Remote}) {
            const double turn = TurnToRelease(BearingFromMark(From(mark, press)), From(mark, drop));
            EXPECT_NEAR(std::remainder(turn - (Bearing(mark, drop) - Bearing(mark, press)), 360), 0, 1e-4);
            EXPECT_LE(std::abs(turn), 180);
        }
    }
    const MarkOffset below = From(Home, {100, 200});
    EXPECT_NEAR(TurnToRelease(10, below), -10, 1e-4) << "not 350";
    EXPECT_NEAR(TurnToRelease(355, below), 5, 1e-4);
}

TEST(CalibrationTurn, KeepsTheDropOnTheLineOfTheStationThatIsNotTurned) {
    struct Case {
        Pixel press, drop, onLine;
    };
    // Remote sees the first press along a flat line, the second along a steep one.
    const Case cases[] = {{{200, 130}, {240, 300}, {240, 150}}, {{280, 80}, {500, 60}, {276, 60}}};
    for (const Case& c : cases) {
        const double turn = TurnAlongOther(From(Home, c.press), From(Remote, c.press), From(Home, c.drop));
        EXPECT_NEAR(turn, Bearing(Home, c.onLine) - Bearing(Home, c.press), 1e-4);
    }
    EXPECT_EQ(NumberRaisedBy([] {
                  TurnAlongOther(From(Home, Remote), From(Remote, Remote), {1, 2});
              }),
              errors::Overflow)
        << "the other mark itself gives no line";
}

}  // namespace
}  // namespace veltrix
