// The dots of the map and the pen on the newest one.

#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "bench/plain_map_displays.h"
#include "display/lightning_dots.h"
#include "support/manual_clock.h"
#include "support/plain_glyphs.h"

namespace veltrix {
namespace {

constexpr int Size = 60;

struct DotsTest : testing::Test {
    PlainGlyphs glyphs;
    ManualClock clock;
    Surface picture{Size, Size, glyphs, {0, 0, Size, Size}};
    Surface clean = picture;
    LightningDots dots{clock};

    void Background(const std::function<ColourValue(int, int)>& color) {
        Bitmap map{Size, Size, {}};
        for (int i = 0; i < Size * Size; ++i) map.pixels.push_back(color(i % Size, i / Size));
        picture.SetPicture(map);
        clean.SetPicture(map);
    }
    void Strike(double x, double y) { dots.MapUpdatePlot(picture, clean, x, y, true); }
};

TEST_F(DotsTest, ThePenGivesBackWhatItStoodOn) {
    Background([](int x, int y) { return Rgb(x, y, 77); });
    Strike(-1, 0);  // the pen was never down: nothing to give back, and no strike to stand on
    EXPECT_EQ(picture.Point(0, 0), Cyan) << "of a pen at -1, -1";
    EXPECT_EQ(picture.Point(1, 0), Rgb(1, 0, 77));
    Strike(20.5, 30.5);
    EXPECT_EQ(picture.Point(0, 0), Rgb(0, 0, 77));
    for (const auto& [x, y] : {std::pair{20, 30}, {21, 30}, {21, 31}, {20, 31}})
        EXPECT_EQ(picture.Point(x, y), Cyan);
    for (const double x : {59.0, 60.0, 2147483647.0, 40.0}) Strike(x, x);
    for (const auto& [x, y] : {std::pair{21, 30}, {21, 31}, {20, 31}, {58, 59}, {59, 58}})
        EXPECT_EQ(picture.Point(x, y), Rgb(x, y, 77));
}

TEST_F(DotsTest, ARebuildTakesDotsUpToBothBordersInclusive) {
    for (const auto& [x, y, enters] :
         {std::tuple{0.0, 0.0, true}, {60, 60, true}, {-0.01, 5, false}, {5, 60.01, false}}) {
        dots.ClearpX2();
        dots.AddpXY2(picture, 7, 7, White, clock.Now());
        dots.AddpXY2(picture, x, y, White, clock.Now());
        picture.Cls();
        dots.DrawAllLightningInPicture4(picture, clean);
        EXPECT_EQ(picture.Point(7, 7), enters ? White : Cyan) << x << ' ' << y;
    }
}

TEST_F(DotsTest, TheMapIsThatOfRepaintingEveryDotEveryTime) {
    std::mt19937 random(3);
    const auto below = [&](unsigned n) { return static_cast<int>(random() % n); };
    Background([&](int, int) { return below(3) ? Black : below(0x1000000); });
    Surface expected = picture;
    PlainDots plain;
    dots.DrawAllLightningInPicture4(picture, clean);
    plain.DrawAll(expected, clean, clock.Now(), dots.Age);
    for (int i = 0; i < 4000; ++i) {
        clock.Advance(below(4000) - 300);  // the user's clock steps back at times
        const double x = below(800) / 10.0 - 5, y = below(800) / 10.0 - 5;
        const bool shift = below(20) != 0;
        if (below(300) == 0) dots.Age = below(120) - 10;
        if (below(7) == 0) {
            const DateTime made = clock.Now() - below(60) / 1440.0;
            if (x >= 0 && x <= Size && y >= 0 && y <= Size) plain.Add(x, y, made);
            dots.AddpXY2(picture, x, y, White, made);
        }
        if (below(15) == 0) {
            dots.DrawLightningInPicture4(picture, clean, shift);
            plain.Draw(expected, clean, shift, clock.Now(), dots.Age);
        }
        dots.MapUpdatePlot(picture, clean, x, y, shift);
        plain.Plot(expected, clean, x, y, shift, clock.Now(), dots.Age);
        if (i % 10 == 0) {
            ASSERT_EQ(picture.Image(), expected.Image()) << i;
        }
    }
}

}  // namespace
}  // namespace veltrix
