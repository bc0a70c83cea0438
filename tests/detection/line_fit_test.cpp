#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <tuple>
#include <vector>

#include "common/failure.h"
#include "detection/class_lkk.h"
#include "detection/filters.h"

namespace veltrix {
namespace {

using Points = std::vector<std::pair<double, double>>;

ClassLKK Fitted(const Points& points) {
    ClassLKK fit;
    fit.Init(99);
    for (const auto& [x, y] : points) fit.Update(x, y);
    return fit;
}

TEST(ClassLKK, FitsLinesOfEveryKind) {
    const std::tuple<Points, double, double> cases[] = {
        {{{1, 2}, {2, 4}, {3, 6}}, 2, 0},    // steep: fitted with x as the dependent variable
        {{{2, 1}, {4, 2}, {6, 3}}, 0.5, 0},  // flat
        {{{0, 3}, {1, 5}, {2, 7}}, 2, 3},    // with an intercept
        {{{1, 0}, {2, 0}, {5, 0}}, 0, 0},    // on the x axis
        {{{0, 1}, {0, 2}, {0, 5}}, 1e9, 0},  // on the y axis
        {{{3, 4}, {3, 4}}, 1e9, 0},          // equal points
        {{{4, 2}}, 0.5, 0},                  // one point
        {{{0, 2}}, 0, 0},                    // one point at x = 0
    };
    for (const auto& [points, a, b] : cases) {
        const ClassLKK::Line line = Fitted(points).GetABYX();
        EXPECT_DOUBLE_EQ(line.a, a);
        EXPECT_NEAR(line.b, b, 1e-12);
    }
}

TEST(ClassLKK, ErrorsMeasureTheDistanceFromTheLine) {
    // Vertical residuals 0, 1 and 2; perpendicular ones smaller by the cosine of the slope.
    const ClassLKK off = Fitted({{1, 1}, {2, 3}, {3, 1}});
    EXPECT_NEAR(off.GetFitError({1, 0}), std::sqrt(5.0), 1e-12);
    EXPECT_NEAR(off.GetFitError2({1, 0}), 100 * 2 / std::sqrt(2.0) / std::sqrt(13.0), 1e-9);
    for (const Points& points : {Points{}, Points{{3, 3}}, Points{{0, 0}, {0, 0}, {0, 0}}})
        EXPECT_THROW((void)Fitted(points).GetFitError2({1, 0}), Failure) << "nothing to measure";
}

TEST(ClassLKK, CoversTheNewestPointsHoweverManyCameBefore) {
    std::mt19937 random(2);
    std::uniform_int_distribution<int> eighth(-8 * 32768, 8 * 32767);
    Points points;
    ClassLKK sliding;
    sliding.Init(99);
    for (int i = 0; i < 1200; ++i) {
        points.emplace_back(eighth(random) / 8.0, eighth(random) / 8.0);
        sliding.Update(points.back().first, points.back().second);
        const Points newest(points.end() - std::min<std::ptrdiff_t>(99, std::ssize(points)), points.end());
        const ClassLKK fresh = Fitted(newest);
        const auto line = sliding.GetABYX();
        ASSERT_EQ(std::tuple(sliding.N, line.a, line.b, sliding.GetFitError(line)),
                  std::tuple(fresh.N, fresh.GetABYX().a, fresh.GetABYX().b, fresh.GetFitError(line)))
            << "to the bit after point " << i;
    }
}

TEST(ClassLowPassFilter, TheFirstValueOnlyArmsIt) {
    ClassLowPassFilter filter;
    filter.Init(20, 5);
    EXPECT_EQ(filter.Update(100), 5);
    EXPECT_EQ(filter.Update(100), 9.75);
    filter.Init(1, 0);
    EXPECT_EQ(filter.Update(100), 5) << "the divisor stayed 20";
}

}  // namespace
}  // namespace veltrix
