// The sync histogram: bins, peak and waterfall.

#include <gtest/gtest.h>

#include <array>
#include <random>

#include "bench/plain_map_displays.h"
#include "support/number_raised_by.h"
#include "support/plain_glyphs.h"
#include "support/recording_errors.h"

namespace veltrix {
namespace {

struct HistogramTest : testing::Test, HistogramOwner {
    PlainGlyphs glyphs;
    RecordingErrors errors;
    Surface picture{196, 5, glyphs, {0, 0, 196, 5}};
    ClassHistogram histogram{errors};
    double median = 8650;

    HistogramTest() { histogram.Parent = this; }
    double MedianDifference() override {
        if (median < -1e6) throw Failure(errors::Overflow, "Overflow", "Test");
        return median;
    }
    void Put(int times, double value) {
        for (int i = 0; i < times; ++i) histogram.Update(value, 10, 0);
    }
};

TEST_F(HistogramTest, AValueFallsIntoItsBin) {
    const std::tuple<double, double, double, int> cases[] = {
        {0, 10, 0, 0},     {0, 0.05, 0.5, 865},  {124, 10, 0, 12},     {-124, 10, 0, 12},
        {17300, 10, 0, 0}, {34720, 10, 0, 12},   {-1, 0.05, 0.5, 845}, {-50, 0.05, 0.5, 135},
        {124, -10, 0, 12}, {17294, 10, 0, 1729}, {17299, 10, 0, 1730},
    };
    for (const auto& [value, scale, offset, bin] : cases) {
        const int before = histogram.MaxValue(bin);
        EXPECT_EQ(histogram.Update(value, scale, offset).bin, bin) << value << ' ' << scale;
        EXPECT_EQ(histogram.MaxValue(bin), before + 1);
    }
}

TEST_F(HistogramTest, WhatHasNoBinIsRaisedAndNotCounted) {
    EXPECT_EQ(NumberRaisedBy([&] { histogram.Update(5, 0, 0); }), errors::DivisionByZero);
    EXPECT_EQ(NumberRaisedBy([&] { histogram.Update(1e300, 1e-300, 0); }), errors::Overflow);
    for (int bin = 0; bin <= 1730; ++bin) ASSERT_EQ(histogram.MaxValue(bin), 0);
    for (const int bin : {-1, 1731})
        EXPECT_EQ(NumberRaisedBy([&] { histogram.MaxValue(bin); }), errors::OutOfRange);
}

TEST_F(HistogramTest, ThePeakIsTheOneThatALookAtAllBinsFinds) {
    std::mt19937 random(5);
    PlainHistogram plain;
    // From all bins, nearly all of them equal, down to a few with the last one and the one past it.
    for (const unsigned bins : {1731U, 400U, 40U, 7U, 0U, 2U, 1U, 1731U}) {
        if (bins == 0) {
            histogram.Clear();
            plain = {};
        }
        for (int i = 0; bins > 0 && i < 2000; ++i) {
            const double value = 17299 - 10.0 * static_cast<double>(random() % bins);
            const ClassHistogram::Bins expected = plain.Update(value, 10, 0);
            const ClassHistogram::Bins got = histogram.Update(value, 10, 0);
            ASSERT_EQ(std::pair(got.bin, got.peak), std::pair(expected.bin, expected.peak)) << bins;
            ASSERT_EQ(histogram.MaxValue(got.peak), plain.sliding[static_cast<std::size_t>(got.peak)]);
        }
    }
}

TEST_F(HistogramTest, AColumnIsPaintedAsBinByBinPaintingLeavesIt) {
    std::mt19937 random(11);
    const std::pair<ColourValue, ColourValue> colors[] = {
        {Red, Rgb(1, 0, 0)}, {Rgb(0, 7, 0), Rgb(0, 1, 0)}, {Rgb(200, 0, 1), Rgb(1, 0, 1)}};
    std::array<std::normal_distribution<>, 4> spread;
    for (std::size_t i = 0; i < 4; ++i)
        spread[i] = std::normal_distribution<>(0, std::array{1, 30, 300, 4000}[i]);
    for (const int width : {1, 7, 196, 1730, 4000})
        for (const double gain : {1.0, 32.0, 0.3, 7.77, -2.0})
            for (const bool merge : {false, true}) {
                PlainHistogram plain;
                histogram.Clear();
                histogram.lRowX = 0;
                Surface got(width, 5, glyphs, {0, 0, static_cast<double>(width), 5});
                for (int x = 0; x < 5 * width; ++x) got.PSet(x / 5, x % 5, x * 12345 % 0x1000000);
                Surface expected = got;
                for (std::size_t i = 0; i < 40; ++i) {
                    for (auto n = random() % 12; n > 0; --n) {
                        const double value = 8650 + spread[i % 4](random);
                        plain.Update(value, 10, 0);
                        histogram.Update(value, 10, 0);
                    }
                    plain.Display(expected, colors[i % 3].second, gain, merge);
                    histogram.DisplaySync2(got, colors[i % 3].first, gain, merge);
                    ASSERT_EQ(got.Image(), expected.Image()) << width << ' ' << gain << ' ' << merge;
                    ASSERT_EQ(histogram.lRowX, plain.rowX);
                }
            }
}

TEST_F(HistogramTest, TheOwnersMedianStandsBetweenTwoRedMarks) {
    const std::tuple<double, double, int> cases[] = {
        {10, 8650, 98}, {10, -25950, 98}, {10, 8640, 97}, {0.05, 43.25, 98}, {0, 865, 98}};
    for (const auto& [scale, value, column] : cases) {
        median = value;
        NumberRaisedBy([&, s = scale] { histogram.Update(1, s, 0); });
        histogram.DisplaySync(picture);
        for (int x = 10; x < 196; ++x)
            EXPECT_EQ(picture.Point(x, 0) == Red, x == column - 4 || x == column + 4) << value << ' ' << x;
    }
    Put(32, 1000);
    Put(31, 1010);  // the same column
    histogram.DisplaySync(picture);
    EXPECT_EQ(std::pair(histogram.lRowX, picture.Point(11, 0)), std::pair(0, Rgb(252, 252, 0)))
        << "63 counts";
    median = -1e7;  // fails
    Put(1, 1000);
    histogram.DisplaySync(picture);
    ASSERT_EQ(errors.reports.size(), 1U);
    EXPECT_EQ(errors.reports[0].context.ErrProcedure, "DisplaySync");
    EXPECT_EQ(histogram.lRowX, 1) << "the rest goes on";
}

}  // namespace
}  // namespace veltrix
