// What is kept of fixes: the ring that survives a restart, and the focus.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "common/failure.h"
#include "location/class_2d_focus.h"
#include "location/recent_data.h"
#include "support/memory_files.h"
#include "support/number_raised_by.h"

namespace veltrix {
namespace {

constexpr DateTime Today = 45413.5;

class FixRing : public ::testing::Test {
  protected:
    /// The ring of a file with that content.
    RecentData Loaded(const std::string& content) {
        files.Put("pMA.dat", content);
        RecentData ring;
        ring.LoadpMA(files, Today);
        return ring;
    }

    ManualClock clock;
    MemoryFiles files{clock};
};

TEST_F(FixRing, ComesBackAfterARestart) {
    RecentData ring;
    for (int i = 0; i < RecentData::Length + 7; ++i)
        ring.Add({true, 0.09 * i, static_cast<std::int16_t>(i % 101), 180 - 0.09 * i, Today + i / 86400.0});
    ring.SavepMA(files);
    EXPECT_TRUE(files.Content("pMA.dat").starts_with("7\n45413.523137;-1;179.91;80;000.09\n"));
    EXPECT_EQ(files.ReadLines("pMA.dat").size(), 2001U);

    RecentData later;
    later.LoadpMA(files, Today + 1);
    EXPECT_EQ(later.iRecentHead, 7);
    for (int slot = 0; slot < RecentData::Length; ++slot) {
        const RecentFix& before = ring.Slot(slot);
        const RecentFix& after = later.Slot(slot);
        ASSERT_TRUE(after.bRecentValid);
        ASSERT_EQ(after.iRecentMapper, before.iRecentMapper);
        ASSERT_NEAR(after.dRecentDirLocal, before.dRecentDirLocal, 0.0051);
        ASSERT_NEAR(after.dRecentDirRemote, before.dRecentDirRemote, 0.0051);
        ASSERT_NEAR(after.dRecentTime, before.dRecentTime, 0.51e-6);
    }
    files.Put("pMA.dat", "9\n1;-1;1;1;1\n");
    later.LoadpMA(files, Today);
    EXPECT_EQ(later.iRecentHead, 7) << "records that stand were read over";
}

TEST_F(FixRing, KeepsNoTraceOfAFixTakenBack) {
    RecentData ring;
    ring.Add({true, 10, 1, 20, Today});
    ring.Add({true, 30, 2, 40, Today});
    ring.TakeBack();
    EXPECT_EQ(ring.Head().dRecentDirLocal, 10);
    ring.TakeBack();
    ring.TakeBack();
    EXPECT_EQ(ring.iRecentHead, 1999);
    for (int slot = 0; slot < RecentData::Length; ++slot) ASSERT_FALSE(ring.Slot(slot).bRecentValid);
    ring.Add({true, 50, 3, 60, Today});
    EXPECT_EQ(ring.Slot(0).dRecentDirLocal, 50);
    ring.Clear();
    EXPECT_FALSE(ring.Head().bRecentValid);
    EXPECT_EQ(NumberRaisedBy([&] { ring.Slot(2000); }), errors::OutOfRange);
}

TEST_F(FixRing, TakesNoRecordThatCouldLeadAstray) {
    const struct {
        std::string line;
        RecentFix expected;
    } cases[] = {
        {"45413.25;-1;010.50;7;170.25", {true, 10.5, 7, 170.25, 45413.25}},
        {"45413,25;1;10,5;7;170,25;more", {true, 10.5, 7, 170.25, 45413.25}},
        {"45413.25;0;010.50;7;170.25", {false, 10.5, 7, 170.25, 45413.25}},
        {"0.000000;-1;010.50;100;170.25", {true, 10.5, 100, 170.25, Today}},
        {"soon;-1;010.50;0;170.25", {true, 10.5, 0, 170.25, Today}},
        {"45413.25;-1;010.50;101;170.25", {}},
        {"45413.25;-1;010.50;-1;170.25", {}},
        {"45413.25;-1;010.50;1e300;170.25", {}},
        {"45413.25;-1;1e300;7;170.25", {}},
        {"45413.25;-1;010.50;7;-2000000", {}},
        {"1e300;-1;010.50;7;170.25", {}},
        {"45413.25;-1;010.50;7", {}},  // no record
        {"", {}},
    };
    for (const auto& c : cases) {
        const RecentFix found = Loaded("1\n45000;-1;1;1;1\n" + c.line + "\n").Head();
        EXPECT_EQ(found.bRecentValid, c.expected.bRecentValid) << c.line;
        EXPECT_EQ(found.dRecentDirLocal, c.expected.dRecentDirLocal) << c.line;
        EXPECT_EQ(found.iRecentMapper, c.expected.iRecentMapper) << c.line;
        EXPECT_EQ(found.dRecentDirRemote, c.expected.dRecentDirRemote) << c.line;
        EXPECT_EQ(found.dRecentTime, c.expected.dRecentTime) << c.line;
    }
    for (const auto& [head, slot] : {std::pair{"1999", 1999},
                                     {"2000", 0},
                                     {"-1", 1999},
                                     {"nan", 0},
                                     {"", 0},
                                     {"12.5", 12},
                                     {"-0.4", 0},
                                     {"1e300", 160},
                                     {"-1e300", 1840}})
        EXPECT_EQ(Loaded(head + std::string("\n")).iRecentHead, slot) << head;
    EXPECT_EQ(Loaded("").iRecentHead, 0);
    std::string tooLong = "1999\n";
    for (int i = 0; i < 2100; ++i) tooLong += "45413.25;-1;1;1;1\n";
    EXPECT_TRUE(Loaded(tooLong).Head().bRecentValid);
    files.Delete("pMA.dat");
    RecentData ring;
    ring.LoadpMA(files, Today);
    EXPECT_EQ(ring.iRecentHead, 0);
}

/// A focus with two stations near the middle of the map.
struct Focused {
    MapPoint Get(double x, double y, int window) {
        return focus.GetFocus(278, 278, 380, 278, {x, y}, static_cast<std::int16_t>(window), Today);
    }
    Class2DFocus focus;
};

TEST(Focus, IsTheMeanOfNeighboursOrNothing) {
    const struct {
        int window;
        MapPoint alone, withNeighbour;
    } cases[] = {{3, {0, 0}, {300.5, 400}}, {0, {300, 400}, {300.5, 400}}, {-1, {0, 0}, {0, 0}}};
    for (const auto& c : cases) {
        Focused focused;
        const MapPoint alone = focused.Get(300, 400, c.window);
        focused.Get(100, 100, c.window);  // far off
        const MapPoint both = focused.Get(301, 400, c.window);
        EXPECT_EQ(alone.dX, c.alone.dX) << c.window;
        EXPECT_EQ(alone.dY, c.alone.dY) << c.window;
        EXPECT_EQ(both.dX, c.withNeighbour.dX) << c.window;
        EXPECT_EQ(both.dY, c.withNeighbour.dY) << c.window;
        focused.focus.Clear();
        EXPECT_EQ(focused.Get(301, 400, c.window).dX, c.alone.dX == 0 ? 0 : 301) << c.window;
    }
}

TEST(Focus, NeedsBothDirectionsAlike) {
    Focused focused;
    focused.Get(278, 400, 3);
    // Seen from the first station in the same direction, from the second one not; and the other way round.
    EXPECT_EQ(focused.Get(278, 500, 3).dX, 0);
    EXPECT_EQ(focused.Get(380 - 204, 522, 3).dX, 0);
}

TEST(Focus, MatchesDirectionsEitherSideOfTheCircle) {
    Focused focused;
    focused.Get(100, 278.2, 3);
    const MapPoint mean = focused.Get(100, 277.8, 3);
    EXPECT_DOUBLE_EQ(mean.dX, 100);
    EXPECT_DOUBLE_EQ(mean.dY, 278);
}

TEST(Focus, CountsTwentyPointsTheTwentyFirstInPlaceOfTheFirst) {
    Focused focused;
    MapPoint mean;
    for (int i = 0; i < 20; ++i) mean = focused.Get(300 + 0.01 * i, 400, 3);
    EXPECT_NEAR(mean.dX, 300.095, 1e-9);
    for (int i = 20; i < 25; ++i) mean = focused.Get(300 + 0.01 * i, 400, 3);
    EXPECT_NEAR(mean.dX, 300.135, 1e-9);  // 4 to 23
}

TEST(Focus, ForgetsAfterFiveHundredFixes) {
    for (const int between : {498, 499}) {
        Focused focused;
        focused.Get(300, 400, 3);
        for (int i = 0; i < between; ++i) focused.Get(100, 100, 3);
        EXPECT_EQ(focused.Get(301, 400, 3).dX, between == 498 ? 300.5 : 0) << between;
    }
}

}  // namespace
}  // namespace veltrix
