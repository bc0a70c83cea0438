// How strong known signals are, and how long that is remembered.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <span>

#include "common/sound_level.h"
#include "support/samples.h"

namespace veltrix {
namespace {

constexpr std::size_t Second = 22050;

/// A second of two sines of whole periods.
Samples Sines(double left, double right) {
    Samples samples;
    for (std::size_t i = 0; i < Second; ++i) {
        const double phase = 2 * std::acos(-1.0) * 1000 * static_cast<double>(i) / Second;
        samples.push_back(Clipped(left * std::sin(phase)));
        samples.push_back(Clipped(right * std::cos(phase)));
    }
    return samples;
}

TEST(SoundLevel, MeasuresASineInBothChannelsHoweverTheBlocksAreCut) {
    const Samples sines = Sines(32768 / 2.0, 32768 / 20.0);
    for (const std::size_t piece : {std::size_t{2 * 7}, std::size_t{2 * 2205}, sines.size()}) {
        SoundLevel level;
        for (std::size_t at = 0; at < sines.size(); at += piece)
            level.Add(SoundLevel::Of(std::span(sines).subspan(at, std::min(piece, sines.size() - at))));
        const auto& [left, right] = level.channels;
        EXPECT_NEAR(left.PeakDb(), -6.02, 0.05);
        EXPECT_NEAR(left.RmsDb(level.frames), -6.02 - 3.01, 0.01);
        EXPECT_NEAR(right.PeakDb(), -26.02, 0.05);
        EXPECT_NEAR(right.RmsDb(level.frames), -26.02 - 3.01, 0.01);
        EXPECT_EQ(level.frames, Second);
        EXPECT_EQ(level.clippedFrames + level.zeroFrames, 0U);
    }
}

TEST(SoundLevel, HoldsFullScaleForLongerThanItsSumsAreWide) {
    // Longer than any block of the recorder.
    const SoundLevel level = SoundLevel::Of(Samples(2 * 300000, -32768));
    EXPECT_EQ(level.channels[0].PeakDb(), 0);
    EXPECT_EQ(level.channels[1].RmsDb(level.frames), 0);
    EXPECT_EQ(level.clippedFrames, 300000U);
}

TEST(SoundLevel, CountsClippedFramesAndExactZeros) {
    const SoundLevel level = SoundLevel::Of(Samples{32767, 0, 0, -32767, 32767, 32766, -32767, 0, 0, 0, 1});
    EXPECT_EQ(level.frames, 6U) << "the last one is a left sample alone";
    EXPECT_EQ(level.clippedFrames, 2U);
    EXPECT_EQ(level.zeroFrames, 1U);
    EXPECT_TRUE(level.channels[0].clips);
    EXPECT_FALSE(level.channels[1].clips) << "a step short of full scale";
    EXPECT_TRUE(SoundLevel::Of(Samples{0, -32768}).channels[1].clips);
    EXPECT_TRUE(level.HasSound());
    EXPECT_FALSE(SoundLevel::Of(Samples{0, 0, 0}).HasSound());
    EXPECT_FALSE(SoundLevel{}.HasSound());
}

TEST(SoundLevelWindow, ForgetsAfterItsLength) {
    SoundLevelWindow window(60);
    window.Advance(100);
    window.Add(SoundLevel::Of(Samples{3277, 3277}));
    window.Advance(159);
    EXPECT_NEAR(window.All().channels[0].PeakDb(), -20, 0.01);
    window.Advance(90);  // no clock that counts up does so
    EXPECT_EQ(window.All().frames, 1U);
    window.Advance(160);
    EXPECT_EQ(window.All().frames, 0U);
    window.Add(SoundLevel::Of(Samples{1, 1}));
    window.Advance(9'000'000'000);
    EXPECT_EQ(window.All().frames, 0U);
}

}  // namespace
}  // namespace veltrix
