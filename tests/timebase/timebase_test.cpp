#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "support/manual_clock.h"
#include "support/number_raised_by.h"
#include "timebase/c_stop_watch_mm.h"
#include "timebase/precise_now.h"

namespace veltrix {
namespace {

constexpr double Millisecond = 1.0 / 86400000;
constexpr double Tolerance = 0.01 * Millisecond;  // a float of today's dates steps by 0.0006 ms

TEST(PreciseNow, KeepsToTheCounterWhenTheComputersClockIsSet) {
    ManualClock clock;
    PreciseNow precise(clock);
    const DateTime start = precise.Now();
    EXPECT_NEAR(start, clock.Now(), Tolerance);
    clock.SetNow(clock.Now() + 0.5);
    clock.Advance(86400000);
    EXPECT_NEAR(precise.Now() - start, 1, Tolerance);
    // At the counter's wrap it goes back by the whole range.
    clock.SetTimeGetTime(2147483647);
    const DateTime last = precise.Now();
    clock.Advance(1);
    EXPECT_NEAR(precise.Now() - last, (1 - 4294967296.0) * Millisecond, Tolerance);
}

TEST(SecondsFraction, IsHalfASecondAheadAndCut) {
    // Seconds of a day 45000 days on; a float leaves half a microsecond of doubt there.
    const std::pair<double, const char*> table[] = {
        {0, ".500"}, {12.5001, ".000"}, {43200.6234, ".123"}, {59.49999, ".000"}, {59.4989, ".998"}};
    for (const auto& [seconds, text] : table)
        EXPECT_EQ(SecondsFraction(45000 + seconds / 86400), text) << seconds;
    EXPECT_EQ(SecondsFraction(-0.75 / 86400), ".750");
}

TEST(StopWatch, GathersTimeOnlyWhileRunning) {
    ManualClock clock;
    clock.SetTimeGetTime(2147483600);  // wraps in 48 ms
    CStopWatchMM watch(clock);
    clock.Advance(120);
    watch.StartTiming();  // is running already
    watch.StopTiming();
    clock.Advance(5000);
    watch.StopTiming();
    EXPECT_EQ(watch.ElapsedTime(), 120);
    watch.StartTiming();
    clock.Advance(30);
    EXPECT_EQ(watch.ElapsedTime(), 150);
    watch.Reset();
    clock.Advance(7);
    EXPECT_EQ(watch.ElapsedTime(), 7);
    // A reset does not start a stopped watch; it leaves the counter's reading in it.
    watch.StopTiming();
    clock.SetTimeGetTime(4000);
    watch.Reset();
    EXPECT_EQ(watch.ElapsedTime(), -4000);
}

/// A multimedia timer of 2 to 100 ms.
struct PeriodClock final : Clock {
    DateTime Now() override { return 45000; }
    std::int32_t timeGetTime() override { return 0; }
    TimerCaps timeGetDevCaps() override { return {2, 100}; }
    bool timeBeginPeriod(std::int32_t period) override { return (inForce = period) != 100; }
    bool timeEndPeriod(std::int32_t period) override { return std::exchange(inForce, 0) == period; }

    std::int32_t inForce = 0;
};

TEST(StopWatch, HoldsItsPeriodAsLongAsItLivesAndRefusesWrongOnes) {
    PeriodClock clock;
    auto watch = std::make_unique<CStopWatchMM>(clock);
    EXPECT_EQ(clock.inForce, 5);
    EXPECT_EQ(NumberRaisedBy([&] { watch->BeginPeriod(10); }), 51) << "one at a time";
    EXPECT_EQ(NumberRaisedBy([&] { watch->EndPeriod(6); }), 51) << "not the one in force";
    watch->EndPeriod(5);
    for (const int period : {1, 100, 101})
        EXPECT_EQ(NumberRaisedBy([&] { watch->BeginPeriod(period); }), 51) << period;
    watch->BeginPeriod(2);
    watch.reset();
    EXPECT_EQ(clock.inForce, 0) << "released at the end";
}

}  // namespace
}  // namespace veltrix
