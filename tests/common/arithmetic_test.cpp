#include "common/arithmetic.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "common/calc_angles.h"
#include "support/number_raised_by.h"

namespace veltrix {
namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

TEST(Rounding, TiesGoToTheEvenNeighbourAndOverflowsJustWhereTheTypeEnds) {
    const double values[] = {0.5, 1.5, 2.5, -0.5, -1.5, -2.5, 0.49999999999999994, 2.5000001, -3.4};
    const int expected[] = {0, 2, 2, 0, -2, -2, 0, 3, -3};
    for (int i = 0; i < 9; ++i) EXPECT_EQ(RoundToLong(values[i]), expected[i]) << values[i];
    EXPECT_EQ(RoundToLong(2147483647.4), 2147483647);
    EXPECT_EQ(RoundToLong(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(RoundToInteger(32767.4), 32767);
    EXPECT_EQ(RoundToInteger(-32768.5), -32768);
    for (const double tooFar : {2147483647.5, -2147483649.0, 1e300, NaN, Infinity, -Infinity})
        EXPECT_EQ(NumberRaisedBy([&] { RoundToLong(tooFar); }), errors::Overflow) << tooFar;
    EXPECT_EQ(NumberRaisedBy([] { RoundToInteger(32767.5); }), errors::Overflow);
}

TEST(Arithmetic, QuotientsAndLogarithmsWithoutAValueRaise) {
    EXPECT_EQ(NumberRaisedBy([] { Divide(0, 0); }), errors::Overflow);
    EXPECT_EQ(NumberRaisedBy([] { Divide(1, -0.0); }), errors::DivisionByZero);
    EXPECT_EQ(NumberRaisedBy([] { Ln(0); }), errors::InvalidCall);
    EXPECT_EQ(NumberRaisedBy([] { Ln(NaN); }), errors::InvalidCall);
    EXPECT_EQ(IntegerPart(-1.5), -2);
    EXPECT_EQ(NextCount(2099999999), 0);
}

TEST(CalcModulo, KeepsTheUpperBoundHoweverFarTheValue) {
    const double values[] = {-10, 0, 360, 360.25, 720, -360, -720.5, 360e9, -360e9, 360e9 + 90, -360e9 - 90};
    const double expected[] = {350, 0, 360, 0.25, 360, 0, 359.5, 360, 0, 90, 270};
    for (int i = 0; i < 11; ++i) EXPECT_EQ(CalcModulo(values[i], 360), expected[i]) << values[i];
    for (const double none : {NaN, Infinity, -Infinity})
        EXPECT_EQ(NumberRaisedBy([&] { CalcModulo(none, 360); }), errors::Overflow);
}

TEST(CalcAtan2, CountsFromTheNearestAxisInItsOwnPi) {
    for (int degrees = 0; degrees < 360; ++degrees) {
        if (degrees == 270 || degrees % 90 == 45) continue;
        const double angle = degrees * std::numbers::pi / 180;
        const double axis = std::round(degrees / 90.0);
        const double expected = axis * CalcPi / 2 + (angle - axis * std::numbers::pi / 2);
        EXPECT_NEAR(CalcAtan2(std::cos(angle), std::sin(angle)), expected, 1e-12) << degrees;
    }
    EXPECT_EQ(CalcAtan2(0, 0), 0);
    EXPECT_EQ(CalcAtan2(0, -1), CalcPi / 2) << "the one point that is not where geometry has it";
    EXPECT_NEAR(CalcAtan2(-1, -1), CalcPi * 5 / 4, 1e-6);
}

}  // namespace
}  // namespace veltrix
