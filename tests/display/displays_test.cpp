// Polar display, history plot, scopes and captions on surfaces of their own.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "display/captions.h"
#include "display/history_plot.h"
#include "display/polar_display.h"
#include "display/scopes.h"
#include "support/plain_glyphs.h"
#include "support/recording_errors.h"
#include "support/test_platform.h"

namespace veltrix {
namespace {

constexpr int View = 557;
constexpr int Middle = 278;
constexpr ColourValue Ground = Rgb(3, 4, 5);

struct PolarTest : testing::Test {
    PlainGlyphs glyphs;
    RecordingErrors errors;
    TestPlatform computer;
    Surface picture{View, View, glyphs, {0, 0, View, View}};
    Surface clean{View, View, glyphs, {0, 0, View, View}};
    PolarDisplay polar{picture, clean, errors};

    PolarTest() {
        picture.SetPicture({View, View, std::vector<ColourValue>(std::size_t{View} * View, Ground)});
        polar.RenewBackground();
    }
    void Update(double direction, double amplitude, ColourValue color = Yellow) {
        polar.GyrelUpdate(direction, amplitude, -100, 0, color);
    }
    /// The pixel at an offset from the centre, east and north positive.
    ColourValue At(int x, int y) const { return picture.Point(Middle + x, Middle - y); }
};

TEST_F(PolarTest, BearingIsTheAngleAndLoudnessTheNearnessToTheCentre) {
    const std::tuple<double, double, int, int> cases[] = {
        {0, -50, 0, 137}, {90, -50, 137, 0}, {180, -50, 0, -137}, {270, -50, -137, 0}, {45, -80, 155, 155},
        {0, 0, 0, 0},     {77, 12, 0, 0},    {90, -100, 274, 0},  {90, -1000, 274, 0}, {450, -50, 137, 0},
    };
    for (const auto& [direction, amplitude, x, y] : cases) {
        Update(direction, amplitude);
        for (const auto& [dx, dy] : {std::pair{0, 0}, {1, 0}, {1, -1}, {0, -1}})
            EXPECT_EQ(At(x + dx, y + dy), White) << x << ' ' << y;
    }
    EXPECT_TRUE(errors.reports.empty());
    polar.GyrelUpdate(0, -1, -50, -50, Yellow);  // equal limits
    ASSERT_EQ(errors.reports.size(), 1U);
    EXPECT_EQ(errors.reports[0].failure.Number(), errors::Overflow) << "0 / 0";
}

TEST_F(PolarTest, DotsFadeWithEachDetectionAndGiveTheBackgroundBack) {
    Update(90, -50, Cyan);
    Update(90, -20, Yellow);  // pushes the dot into the trail, in the family of this one
    EXPECT_EQ(At(137, 0), Yellow);
    EXPECT_EQ(At(138, -1), Ground) << "what was under the head";
    const std::pair<int, ColourValue> ages[] = {
        {1, Rgb(250, 250, 0)}, {2, Rgb(250, 249, 0)}, {250, Rgb(188, 125, 0)},
        {500, Rgb(125, 0, 0)}, {995, Rgb(1, 0, 0)},   {996, Ground},
    };
    int age = 0;
    for (const auto& [slot, color] : ages) {
        for (; age < slot; ++age) Update(180, -90);  // at another place
        EXPECT_EQ(At(137, 0), color) << slot;
    }
}

TEST_F(PolarTest, ARemoteDetectionMarksTheDotThatItPushes) {
    Update(90, -50, Yellow);
    Update(180, -50, Cyan);
    EXPECT_EQ(At(137, 0), Cyan);
    Update(0, -90, Yellow);
    EXPECT_EQ(At(137, 0), Rgb(0, 250, 250));
    EXPECT_EQ(At(0, -137), Yellow);
    // Families are not saved: after a restart all dots are yellow.
    polar.Save(computer.files);
    PolarDisplay again(picture, clean, errors);
    again.Load(computer.files);
    picture.Cls();
    again.RenewBackground();
    EXPECT_EQ(At(137, 0), Rgb(250, 250, 0));
}

TEST_F(PolarTest, TheNeedleAndTheRingStand) {
    for (int i = 0; i < 3; ++i) Update(200 + i, -60);
    for (int row = 2; row < Middle; ++row) EXPECT_EQ(picture.Point(Middle, row), Yellow) << row;
    EXPECT_EQ(At(0, -3), Yellow);
    EXPECT_EQ(At(1, -1), Black) << "the first update gives back what it never saved";
    EXPECT_EQ(std::pair(picture.Point(Middle, 0), picture.Point(Middle, 1)), std::pair(Ground, Yellow));
    for (const int x : {-2, -1, 1, 2, 3}) EXPECT_EQ(At(x, 0), Yellow) << x;
    EXPECT_EQ(At(0, 0), Rgb(250, 249, 0)) << "the first head, over the empty slots";
    EXPECT_EQ(std::pair(At(-3, 0), At(4, 0)), std::pair(Ground, Ground));
}

TEST_F(PolarTest, ClearingLeavesTheNewestStoredDot) {
    for (int i = 0; i < 4; ++i) Update(90, -10.0 * (i + 1));
    polar.ClearGyrelHistory();
    picture.Cls();
    polar.RenewBackground();
    for (const int x : {27, 55, 82}) EXPECT_EQ(At(x, 0), Ground) << x;
    Update(180, -90);
    EXPECT_EQ(At(82, 0), Rgb(250, 250, 0));
    EXPECT_EQ(At(110, 0), Yellow) << "the old head";
}

TEST_F(PolarTest, ADamagedTrailFileIsReadAsFarAsItGoes) {
    // Each with the last slot that is still read.
    const std::pair<const char*, int> cases[] = {
        {"", -1},
        {"10,1\n20,2\n", 1},
        {" 10 , 1 \n20;2\n30,3\n", 0},
        {"10,1\nx,1\n", 0},
        {"10,1\n20,99999999999\n30,3\n", 0},
    };
    for (const auto& [file, last] : cases) {
        computer.files.Put("pXY.dat", file);
        PolarDisplay other(picture, clean, errors);
        other.Load(computer.files);
        other.Save(computer.files);
        const auto lines = computer.files.ReadLines("pXY.dat");
        ASSERT_EQ(lines.size(), PolarDisplay::Slots);
        for (int slot = 0; slot < 4; ++slot)
            EXPECT_EQ(lines[static_cast<std::size_t>(slot)] == "0,0", slot > last) << file << slot;
    }
}

TEST(HistoryPlotTest, TimeRunsToTheRightDirectionDownAndTheStrongerColourStays) {
    PlainGlyphs glyphs;
    RecordingErrors errors;
    HistoryPlot plot(errors);
    const double day = 45458, second = 1.0 / 86400;
    const std::tuple<double, double, double, double, double, int, int, ColourValue> cases[] = {
        {0, 180, -100, -100, 0, 0, 0, Rgb(128, 8, 0)},
        {1 - second, 179.9, 0, -100, 0, 556, 556, Rgb(157, 157, 255)},
        {0.5, 270, -1000, -100, 0, 278, 278, Rgb(128, 8, 0)},
        {0.5, 90, 50, -100, 0, 278, 278, Rgb(157, 157, 255)},
        {0.25, 45, -50, -50, -50, 139, 139, Rgb(157, 157, 255)},
        {0.25, 45, -50, -100.4, 0.5, 139, 139, Rgb(255, 240, 21)},  // limits rounded, ties to even
    };
    for (const auto& [time, direction, amplitude, minDb, maxDb, x, y, color] : cases) {
        Surface plate(557, 557, glyphs, {0, 0, 24, 180});
        plot.UpdateDisplay(day + time, direction, amplitude, minDb, maxDb, plate);
        EXPECT_EQ(plate.Image().pixels[static_cast<std::size_t>(y * 557 + x)], color) << time;
    }
    Surface picture(557, 557, glyphs, {0, 0, 24, 180});
    picture.PSet(12, 45, Rgb(1, 250, 3));
    for (int i = 0; i < 2; ++i) plot.UpdateDisplay(day + 0.5, 45, -100, -100, 0, picture);
    EXPECT_EQ(picture.Point(12, 45), Rgb(128, 250, 3));
    plot.UpdateDisplay(day, -1, -50, -100, 0, picture);
    plot.UpdateDisplay(day, 400, 1e308, -100, 0, picture);
    EXPECT_TRUE(errors.reports.empty());
    plot.UpdateDisplay(day, 0, 0, -40000, 0, picture);
    EXPECT_EQ(errors.reports.size(), 1U);
}

struct Scopes {
    PlainGlyphs glyphs;
    Surface picture2{205, 197, glyphs, {0, 58000, 100, -63000}};
    Surface picture3{205, 205, glyphs, {-24000, 24000, 48000, -48000}};
    AmplitudeScope amplitude{picture2};
    XYScope xy{picture3};

    void Arm() {
        amplitude.ScopeArm();
        xy.ScopeArmXY();
    }
    void Frame(double ns, double ew) {
        amplitude.ScopeTrigger(3 * std::hypot(ns, ew));
        xy.ScopeTriggerXY(ns, ew);
    }
};

TEST(ScopesTest, ATraceShowsThirtyFramesBeforeTheTriggerAndIsGoneWithTheNext) {
    Scopes scopes;
    for (const double level : {1000.0, 1900.0}) {
        for (int i = 0; i < 250; ++i) scopes.Frame(0, 0);
        scopes.Frame(level, 0);
        scopes.Arm();
        EXPECT_TRUE(scopes.amplitude.Drawing() && scopes.xy.Drawing());
        for (int i = 0; i < 99; ++i) scopes.Frame(level, -level / 1000);
        EXPECT_FALSE(scopes.amplitude.Drawing() || scopes.xy.Drawing());
        // The triggering frame stands at 30, and a step in the trace at 29 to 30.
        for (int x = 1; x < 100; ++x)
            EXPECT_EQ(scopes.picture2.Point(x, x >= 30 ? 30 * level : 0), Red) << level << ' ' << x;
        EXPECT_EQ(scopes.picture3.Point(-level / 100, level * 10), Rgb(0, 255, 0));
    }
    EXPECT_EQ(scopes.picture2.Point(60, 30000), Black) << "the old trace";
    EXPECT_EQ(scopes.picture3.Point(-10, 10000), Black);
}

TEST(ScopesTest, FramesAtOnceAreTheSameAsOneByOne) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> sample(-3000, 3000);
    Scopes single, rows;
    for (int round = 0; round < 40; ++round) {
        const std::size_t count = random() % 530;
        std::vector<double> ns(count), ew(count), values(count);
        for (std::size_t i = 0; i < count; ++i) {
            ns[i] = sample(random);
            ew[i] = sample(random);
            values[i] = 3 * std::hypot(ns[i], ew[i]);
            single.Frame(ns[i], ew[i]);
        }
        const auto last = [](const std::vector<double>& all) {
            return std::span(all).last(std::min<std::size_t>(all.size(), 100));
        };
        rows.amplitude.Quiet(count, last(values));
        rows.xy.Quiet(count, last(ns), last(ew));
        for (Scopes* const scopes : {&single, &rows}) {
            scopes->Arm();
            for (int i = 0; i < 99; ++i) scopes->Frame(100 * i, -50 * i);
            scopes->xy.MarkFit(round, 300.0 * round);
        }
        ASSERT_EQ(single.picture2.Image(), rows.picture2.Image()) << round;
        ASSERT_EQ(single.picture3.Image(), rows.picture3.Image()) << round;
    }
}

TEST(ScopesTest, TheMarksOfTheFitTurnDarkWithTheNextPulse) {
    Scopes scopes;
    const double quarter = std::acos(-1.0) / 4;
    scopes.xy.MarkFit(quarter, 10000);
    scopes.xy.MarkFit(-quarter, 10000);
    for (const double side : {-7071.0, 7071.0}) {
        EXPECT_EQ(scopes.picture3.Point(side, side), Rgb(0, 0, 64));
        EXPECT_EQ(scopes.picture3.Point(side, -side), Rgb(0, 0, 255));
    }
}

/// The caption of a map with an announcement of five characters, by the pixel.
ColourValue MapCaptionAt(int x, int y) {
    const auto isText = [&](int left, int top, int length) {
        return x >= left && x < left + 6 * length && y >= top && y < top + 10;
    };
    const auto ramp = [y](int from, int least) { return std::max(255 - 8 * std::max(y - from, 0), least); };
    if (x < 115 ? isText(0, 0, 20) || isText(0, 13, 18) || isText(14, 30, 7) || isText(14, 99, 10)
                : isText(115, 0, 5))
        return White;
    if (x <= 110 && y <= 12) return Rgb(128, 0, 0);
    const bool isBar = x >= 3 && x <= 13 && y >= 30 && y <= 110;
    return isBar ? Rgb(ramp(94, 127), ramp(62, 0), ramp(30, 0)) : Ground;
}

TEST_F(PolarTest, ACaptionIsCutAndLeavesNothingOfTheOneBefore) {
    for (Surface* const each : {&picture, &clean})
        each->SetPicture({View, View, std::vector<ColourValue>(std::size_t{View} * View, Ground)});
    for (const std::string& text : {std::string(200, 'a'), std::string("Hello")})
        DrawMapCaption(picture, clean, {0, "1.2.3", "127.0.0.1"}, {1440, text});
    for (int y = 0; y < View; ++y)
        for (int x = 0; x < View; ++x) ASSERT_EQ(picture.Point(x, y), MapCaptionAt(x, y)) << x << ' ' << y;
}

}  // namespace
}  // namespace veltrix
