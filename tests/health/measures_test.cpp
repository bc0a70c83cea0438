// What is measured of the sound and counted of the strikes, on known signals and a set clock.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

#include "health/rate_counter.h"
#include "health/sound_meter.h"
#include "support/manual_clock.h"
#include "support/samples.h"

namespace veltrix {
namespace {

TEST(RateCounter, CountsTheLastMinuteAndHourToTheSecond) {
    RateCounter counter;
    counter.Count();  // before the clock is known
    counter.Advance(1'000'000);
    counter.Count(2);
    struct Moment {
        std::int64_t second;
        std::uint64_t minute, hour;
    };
    for (const Moment& at : {Moment{60, 3, 3}, Moment{61, 0, 3}, Moment{3600, 0, 3}, Moment{3601, 0, 0}}) {
        counter.Advance(1'000'000 + at.second);
        EXPECT_EQ(counter.LastMinute(), at.minute) << at.second;
        EXPECT_EQ(counter.LastHour(), at.hour) << at.second;
    }
    for (int i = 0; i < 100; ++i) {
        counter.Count();
        counter.Advance(1'003'602 + i);
    }
    EXPECT_EQ(counter.LastMinute(), 60U) << "the present second is empty";
    EXPECT_EQ(counter.LastHour(), 100U);
    counter.Advance(9'000'000'000);
    EXPECT_EQ(counter.LastHour(), 0U);
    EXPECT_EQ(counter.Total(), 103U);
}

struct Sound : ::testing::Test {
    ManualClock clock;
    std::optional<SoundMeter> fresh{clock};
    SoundMeter& meter = *fresh;

    /// Blocks of 100 ms at a rate, the last of them at the end of `seconds`.
    SoundHealth Play(double seconds, double rate = 22050, const Samples& sample = {100, 100}) {
        SoundHealth state = meter.State();
        double due = 0;
        for (int block = 1; block <= std::lround(seconds * 10); ++block) {
            clock.Advance(100);
            due += rate / 10;
            const auto frames = static_cast<std::size_t>(due);
            due -= static_cast<double>(frames);
            Samples samples;
            for (std::size_t i = 0; i < frames; ++i) samples.insert(samples.end(), {sample[0], sample[1]});
            meter.BeginBlock();
            meter.Take(samples);
            if (block % 10 == 0) state = meter.State();
        }
        return state;
    }
    SoundHealth Pause(int seconds) {
        for (int i = 0; i < seconds; ++i) {
            clock.Advance(1000);
            meter.State();
        }
        return meter.State();
    }
};

TEST_F(Sound, ArrivesOrNotSinceAMomentOfBothClocks) {
    const DateTime start = clock.Now();
    SoundHealth state = Pause(5);
    EXPECT_FALSE(state.arriving);
    EXPECT_EQ(state.secondsAgo, 5);
    EXPECT_EQ(state.since, start);
    state = Play(20);
    EXPECT_TRUE(state.arriving);
    EXPECT_EQ(state.secondsAgo, 19);
    EXPECT_NEAR((state.since - start) * SecondsPerDay, 5.1, 1e-3);
    EXPECT_EQ(state.blocks, 200U);
    EXPECT_EQ(state.frames, 441000U);
    EXPECT_TRUE(Pause(3).arriving);
    clock.SetNow(start - 1);  // a day back
    state = Pause(2);
    EXPECT_FALSE(state.arriving);
    EXPECT_EQ(state.secondsAgo, 5) << "since the last block";
    EXPECT_NEAR((state.since - start) * SecondsPerDay, 25, 1e-3);
    EXPECT_FALSE(state.rate) << "no rate of no sound";
}

TEST_F(Sound, TheRateIsMeasuredAcrossTheWrapOfTheCounter) {
    for (const std::int32_t counter : {-30'000, std::numeric_limits<std::int32_t>::max() - 30'000}) {
        clock.SetTimeGetTime(counter);
        fresh.emplace(clock);
        EXPECT_FALSE(Play(14).rate);
        const SoundHealth state = Play(115, 22050);
        ASSERT_TRUE(state.rate);
        EXPECT_NEAR(state.rate->rate, 22050, 0.5);
        EXPECT_EQ(state.secondsAgo, 128);
    }
}

TEST_F(Sound, TheRateFollowsWithinAnHourAndBeginsAnewAfterABreak) {
    Play(4000, 22000, {5, 5});
    EXPECT_NEAR(meter.State().rate->rate, 22000, 0.1);
    EXPECT_NEAR(meter.State().rate->seconds, 3600, 61);
    EXPECT_LT(meter.State().rate->uncertainty, 2);
    Pause(6);
    for (int block = 0; block < 6; ++block) {  // what has piled up comes at once
        clock.Advance(100);
        meter.BeginBlock();
        meter.Take(Samples(2 * 22100));
    }
    EXPECT_FALSE(Play(12, 22100).rate);
    EXPECT_NEAR(Play(30, 22100).rate->rate, 22100, 0.5);
}

TEST_F(Sound, DigitalSilenceIsTenSecondsOfExactZeros) {
    Play(5);
    EXPECT_FALSE(Play(8, 22050, {0, 0}).isDigitalSilence);
    EXPECT_TRUE(Play(3, 22050, {0, 0}).isDigitalSilence);
    EXPECT_FALSE(Play(1, 22050, {0, 1}).isDigitalSilence) << "one antenna is not enough";
    EXPECT_FALSE(Pause(20).isDigitalSilence) << "silence has frames";
    EXPECT_FALSE(Play(2, 22050, {0, 0}).isDigitalSilence) << "the pause does not count";
}

}  // namespace
}  // namespace veltrix
