#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <utility>

#include "support/memory_files.h"
#include "support/number_raised_by.h"
#include "timebase/c_stop_watch_mm.h"
#include "timebase/class_clock_drift.h"
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
    // On over the turns of the counter, for a year.
    DateTime last = precise.Now();
    for (int day = 1; day <= 365; ++day) {
        clock.Advance(86400000);
        EXPECT_NEAR(precise.Now() - last, 1, Tolerance) << day;
        last = precise.Now();
    }
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

TEST(ClassClockDrift, MeasuresThroughARestartAndTakesWhatIsWholeOfAnyFile) {
    constexpr double SamplesPerDay = 22050 * SecondsPerDay * (1 + 30e-6);  // of a card that runs fast
    ManualClock clock;
    MemoryFiles files(clock);
    for (int run = 0; run < 2; ++run) {
        PreciseNow precise(clock);
        ClassClockDrift drift(files);
        const DateTime start = precise.Now();
        // Detections at random on half a day; the counter of samples begins anew with each run.
        for (unsigned random = 1; precise.Now() - start < 0.5; random = random * 1103515245 + 12345) {
            clock.Advance(random / 65536 % 60000);
            drift.Update(precise.Now(), std::floor((precise.Now() - start) * SamplesPerDay));
        }
        EXPECT_NEAR(drift.GetCoarse() / SamplesPerDay, 1, 2e-6);
        drift.Save();
    }
    std::string zeros;
    for (int i = 0; i < 998; ++i) zeros += "0;0\n";
    const std::string pair = "45000;1000\n45001;3000\n";
    const std::pair<std::string, double> table[] = {
        {"0\n" + pair, 0},  // between the newest and the oldest record lies no rate
        {"0\n45001;3000\n" + zeros + "45000;1000\n", 0},  // nor round the end of the ring
        {"999\n" + zeros + pair + pair, 2000},            // more lines than places
        {"7\n45000;1000\nrubbish\n\n45001,0;3000,0;x\n45001;9000\n", 2000},
        {"-1\n" + pair + "1e999;1e999\n-1e999;-1e999\n", 1},
    };
    for (const auto& [content, rate] : table) {
        files.Put("ClockDrift.dat", content);
        ClassClockDrift drift(files);
        EXPECT_EQ(drift.GetCoarse(), rate) << content.substr(0, 40);
        for (const double seconds : {0.0, 59.9}) drift.Update(45002 + seconds / SecondsPerDay, 5000.25);
        drift.Save();
        const auto lines = files.ReadLines("ClockDrift.dat");
        EXPECT_EQ(lines.at(std::stoul(lines[0]) + 1), "45002;5000.25") << content.substr(0, 40);
    }
}

}  // namespace
}  // namespace veltrix
