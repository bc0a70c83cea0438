// What is kept of fixes: the ring that survives a restart, and the focus.

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <tuple>

#include "bench/plain_focus.h"
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
    const std::string saved = files.Content("pMA.dat");
    later.SavepMA(files);
    EXPECT_TRUE(files.Content("pMA.dat") == saved);
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
        {"45413.25;-1;010.50;7;-2000000", {}},
        {"1e300;-1;010.50;7;170.25", {}},
        {"45413.25;-1;010.50;7", {}},  // no record
        {"", {}},
    };
    const auto fieldsOf = [](const RecentFix& fix) {
        return std::tuple(fix.bRecentValid, fix.dRecentDirLocal, fix.iRecentMapper, fix.dRecentDirRemote,
                          fix.dRecentTime);
    };
    for (const auto& c : cases) {
        const RecentFix found = Loaded("1\n45000;-1;1;1;1\n" + c.line + "\n").Head();
        EXPECT_EQ(fieldsOf(found), fieldsOf(c.expected)) << c.line;
    }
    const std::pair<const char*, int> heads[] = {{"1999", 1999}, {"2000", 0},    {"-1", 1999},
                                                 {"nan", 0},     {"", 0},        {"12.5", 12},
                                                 {"-0.4", 0},    {"1e300", 160}, {"-1e300", 1840}};
    for (const auto& [head, slot] : heads)
        EXPECT_EQ(Loaded(head + std::string("\n")).iRecentHead, slot) << head;
    std::string tooLong = "1999\n";
    for (int i = 0; i < 2100; ++i) tooLong += "45413.25;-1;1;1;1\n";
    EXPECT_TRUE(Loaded(tooLong).Head().bRecentValid);
    files.Delete("pMA.dat");
    RecentData ring;
    ring.LoadpMA(files, Today);
    EXPECT_EQ(ring.iRecentHead, 0);
}

TEST(Focus, IsTheMeanOfNeighboursOrNothing) {
    const struct {
        int window;
        double alone, withNeighbour;
    } cases[] = {{3, 0, 300.5}, {0, 300, 300.5}, {-1, 0, 0}};
    for (const auto& c : cases) {
        Class2DFocus focus;
        const auto focusOf = [&](double x, double y) {
            return focus.GetFocus(278, 278, 380, 278, {x, y}, static_cast<std::int16_t>(c.window), Today).dX;
        };
        EXPECT_EQ(focusOf(300, 400), c.alone) << c.window;
        focusOf(100, 100);  // far off
        EXPECT_EQ(focusOf(301, 400), c.withNeighbour) << c.window;
        focus.Clear();
        EXPECT_EQ(focusOf(301, 400), c.alone == 0 ? 0 : 301) << c.window;
    }
}

/// Fixes all over the map, crowded, on the stations' own lines, far off and nowhere, with all kinds of
/// windows.
TEST(Focus, GivesWhatTheWalkOverAllRecordsGives) {
    std::mt19937 random(9);
    const auto within = [&random](double low, double high) {
        return std::uniform_real_distribution<>(low, high)(random);
    };
    for (const double spread : {0.0, 3.0, 40.0, 280.0, 1e5}) {
        Class2DFocus focus;
        PlainFocus plain;
        for (int i = 0; i < 1700; ++i) {
            MapPoint fix{278 + within(-spread, spread), 278 + within(-spread, spread)};
            if (i % 7 == 0) fix.dX = 278;
            if (i % 11 == 0) fix.dY = 278;
            if (i % 301 == 0) fix.dX = std::numeric_limits<double>::quiet_NaN();
            const int windows[] = {3, 1, 0, -1, -32768, 90, 200, 358, 359, 360, 32767};
            const auto window = static_cast<std::int16_t>(windows[i % 13 < 11 ? i % 13 : 1]);
            const MapPoint found = focus.GetFocus(278, 278, 380, 278, fix, window, Today);
            const MapPoint expected = plain.GetFocus(278, 278, 380, 278, fix, window, Today);
            ASSERT_EQ(found.dX, expected.dX) << spread << " " << i;
            ASSERT_EQ(found.dY, expected.dY) << spread << " " << i;
        }
    }
}

}  // namespace
}  // namespace veltrix
