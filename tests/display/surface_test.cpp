// Drawing surfaces and the files they are written to.

#include "display/surface.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>

#include "display/bitmap_file.h"
#include "support/plain_glyphs.h"

namespace veltrix {
namespace {

struct SurfaceTest : testing::Test {
    PlainGlyphs glyphs;
    Surface pixels{9, 7, glyphs, {0, 0, 9, 7}};

    /// The painted pixels as text, a line each row.
    static std::string Drawn(const Surface& surface) {
        std::string text;
        for (int y = 0; y < surface.Image().height; ++y) {
            for (int x = 0; x < surface.Image().width; ++x)
                text += surface.Image().pixels[static_cast<std::size_t>(y * surface.Image().width + x)] ? '#'
                                                                                                        : '.';
            text += '\n';
        }
        return text;
    }
};

TEST_F(SurfaceTest, ACoordinateBelongsToThePixelItLiesIn) {
    const double second = 1.0 / 86400;
    // The column and the row of 557 by 557; -1 outside.
    const std::tuple<SurfaceScale, double, double, int, int> cases[] = {
        {{0, 0, 24, 180}, 0, 0, 0, 0},
        {{0, 0, 24, 180}, 24 * (1 - second), 179.9, 556, 556},
        {{0, 0, 24, 180}, 24 * (1 - second / 1e4), 0, -1, -1},  // coordinates are 4-byte floats
        {{0, 0, 24, 180}, 24, 0, -1, -1},
        {{0, 0, 24, 180}, 12, 90, 278, 278},
        {{0, 0, 24, 180}, 12, -0.001, -1, -1},
        {{-24000, 24000, 48000, -48000}, -24000, 24000, 0, 0},
        {{-24000, 24000, 48000, -48000}, 23999, -23999, 556, 556},
        {{0, 0, 557 * 7, 557 * 7}, 7 * 41, 7 * 551, 41, 551},  // on the border of two pixels
        {{0, 58000, 100, -63000}, 0, 63000, -1, -1},
        {{0, 58000, 100, -63000}, 99.99, -4999, 556, 556},
    };
    for (const auto& [scale, x, y, column, row] : cases) {
        Surface surface(557, 557, glyphs, scale);
        surface.PSet(x, y, Red);
        EXPECT_EQ(surface.Point(x, y), column < 0 ? -1 : Red);
        for (int i = 0; i < 557 * 557; ++i)
            if (surface.Image().pixels[static_cast<std::size_t>(i)] != Black) {
                EXPECT_EQ(std::pair(i % 557, i / 557), std::pair(column, row)) << x << " " << y;
            }
    }
}

TEST_F(SurfaceTest, LinesHoldBothEndsAndCirclesAreRoundAboutTheirPixel) {
    pixels.Line(1, 1, 7, 1, Red);
    pixels.Line(4, 5, 4, 3, Red);
    pixels.Line(8, 6, 6, 4, Red);
    EXPECT_EQ(Drawn(pixels), ".........\n.#######.\n.........\n....#....\n....#.#..\n....#..#.\n........#\n");
    Surface plate(41, 41, glyphs, {0, 0, 41, 41});
    plate.Circle(20, 20, 15, Red);
    for (int x = 0; x < 41; ++x)
        for (int y = 0; y < 41; ++y) {
            const double off = std::abs(std::hypot(x - 20, y - 20) - 15);
            const bool isDrawn = plate.Point(x, y) == Red;
            EXPECT_TRUE(off < 0.71 || !isDrawn) << x << " " << y;
            EXPECT_TRUE(off > 0.25 || isDrawn) << x << " " << y;
            EXPECT_EQ(plate.Point(x, y), plate.Point(40 - y, x)) << "the same in each quarter";
        }
}

TEST_F(SurfaceTest, WhatFallsOutsideIsLeftOut) {
    using Limits = std::numeric_limits<double>;
    for (const double x : {-1.0, 9.0, 1e9, -1e300, Limits::infinity(), Limits::quiet_NaN()}) {
        pixels.PSet(x, 0, Red);
        pixels.Circle(x, 3, 0.25, Red);
        pixels.Circle(4, 3, x > 100 ? x : 100, Red);
        EXPECT_EQ(pixels.Point(x, 3), -1);
        EXPECT_EQ(pixels.Point(3, x), -1);
    }
    pixels.PSet(1e9, -1e9, Red);
    pixels.Print("text far outside");
    EXPECT_EQ(Drawn(pixels).find('#'), std::string::npos);
    pixels.Line(-5e8, 3, 1e300, 3, Red);
    EXPECT_EQ(Drawn(pixels).substr(30, 9), "#########") << "what lies inside is drawn";
    for (const int far : {4, 40, 40000, 4000000}) {
        Surface plate(9, 7, glyphs, {0, 0, 9, 7});
        plate.Line(4 - far, 3 - 2 * far, 4 + far, 3 + 2 * far, Red);
        EXPECT_EQ(Drawn(plate),
                  "..#......\n...#.....\n...#.....\n....#....\n....#....\n.....#...\n.....#...\n");
    }
}

TEST_F(SurfaceTest, ClearingGoesBackToThePictureAndTheTextToTheCorner) {
    Surface page(40, 30, glyphs, {0, 0, 40, 30});
    page.ForeColor = Yellow;
    page.SetPicture({2, 1, {Red, White}});
    page.PSet(0, 0, Black);
    page.PSet(20, 15, Black);
    page.Print("A");
    EXPECT_EQ(page.Point(20, 15), Yellow) << "text begins where the last pixel was painted";
    page.Print("A");
    EXPECT_EQ(page.Point(0, 15 + PlainGlyphs::Height), Yellow) << "and goes on at the left of the next line";
    page.Cls();
    EXPECT_EQ(std::pair(page.Point(0, 0), page.Point(20, 15)), std::pair(Red, Black));
    page.Print("A");
    EXPECT_EQ(page.Point(0, 0), Yellow);
    page.SetPicture({});
    EXPECT_EQ(Drawn(page).find('#'), std::string::npos);
}

TEST_F(SurfaceTest, ABitmapFileHoldsTheRowsFromTheBottomInBlueGreenRed) {
    const std::string bytes = BmpBytes({3, 2, {Red, White, Black, Rgb(1, 2, 3), Yellow, Rgb(9, 8, 7)}});
    ASSERT_EQ(bytes.size(), 54U + 2 * 12);
    EXPECT_EQ(bytes.substr(0, 6), std::string("BM\x4E\0\0\0", 6));
    EXPECT_EQ(bytes.substr(10, 20), std::string("\x36\0\0\0\x28\0\0\0\3\0\0\0\2\0\0\0\1\0\x18\0", 20));
    EXPECT_EQ(bytes.substr(54),
              std::string("\3\2\1\0\xFF\xFF\7\x08\x09\0\0\0\0\0\xFF\xFF\xFF\xFF\0\0\0\0\0\0", 24));
}

}  // namespace
}  // namespace veltrix
