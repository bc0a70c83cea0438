// How loud it is: the state file and the level meter.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "recorder/level_meter.h"
#include "recorder/state_file.h"
#include "support/samples.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

using namespace std::chrono_literals;

/// A sine of `left` and `right` height, a tenth of a second of whole periods.
Samples Sine(double left, double right) {
    Samples samples;
    for (int i = 0; i < RecorderSampleRate / 10; ++i) {
        const double value = std::sin(2 * std::numbers::pi * i / 15);
        samples.insert(samples.end(), {Clipped(left * value), Clipped(right * value)});
    }
    return samples;
}

TEST(LevelMeter, JudgesEachChannelByTheLastSeconds) {
    using Verdict = LevelMeter::Verdict;
    LevelMeter meter;
    Moment now{};
    const auto hear = [&](const Samples& samples, int tenths, std::uint64_t clippedBySource = 0) {
        for (int i = 0; i < tenths; ++i, now += 100ms) {
            const SoundLevel level = SoundLevel::Of(samples);
            meter.Add(level, std::max(level.clippedFrames, clippedBySource), now);
        }
        return std::pair(meter.VerdictOf(0), meter.VerdictOf(1));
    };
    EXPECT_EQ(hear({}, 10), std::pair(Verdict::Nothing, Verdict::Nothing));
    EXPECT_EQ(meter.Summary(), "no sound came");
    EXPECT_EQ(hear(Sine(0, 0), 10), std::pair(Verdict::Nothing, Verdict::Nothing));
    EXPECT_FALSE(meter.HasHeardSound());
    EXPECT_EQ(hear(Sine(16384, 100), 10), std::pair(Verdict::Good, Verdict::TooLow));
    // -6.0: half of full scale, the peak between two samples; its RMS is 3 dB below.
    EXPECT_NE(meter.Line().find("peak  -6.1  rms  -9.0"), std::string::npos) << meter.Line();
    EXPECT_EQ(hear(Sine(400, 40000), 1), std::pair(Verdict::Good, Verdict::Clipping)) << "held";
    EXPECT_EQ(hear(Sine(110, 110), 60), std::pair(Verdict::Good, Verdict::Good)) << "forgotten";
    EXPECT_EQ(hear(Sine(5000, 400), 1, 3).first, Verdict::Clipping) << "before it was resampled";
    for (const std::size_t width : {std::size_t{1}, std::size_t{80}, std::size_t{200}})
        for (const std::string& bar : meter.Bars(width))
            EXPECT_LE(bar.size(), std::max<std::size_t>(width, 70));
}

TEST(StateFile, TellsAStationEverythingAndYieldsToALaterRecorder) {
    const ScratchFolder folder;
    UtcTime utc = ParseUtc("2026-11-22T02:30:00.9Z").value();
    StateFile file(folder.Path(), "1.2.3", [&utc] { return utc; });
    Moment now{};
    RecorderState state;
    state.framesWritten = 5'000'000'000;
    state.framesLost = 7;
    state.blocksWritten = 9;
    state.clippedFrames = 2;
    state.source.kind = "card";
    state.source.device = "USB\nAudio\x01 \xC3\xA4" + std::string(300, 'x');
    state.source.rate = 44100;
    state.level = SoundLevel::Of(Sine(16384, 0));
    EXPECT_TRUE(file.IsDue(now, state.source));
    file.Write(now, state);
    const std::string text = folder.Content("SndInput.state");
    for (const char* const line :
         {"version=1.2.3", "updated=2026-11-22T02:30:00Z", "source=card", "state=recording",
          "since=2026-11-22T02:30:00Z", "device_rate=44100", "rate=22050", "frames_written=5000000000",
          "frames_lost=7", "blocks_written=9", "peak_left_db=-6.1", "peak_right_db=-inf", "rms_left_db=-9.0",
          "rms_right_db=-inf", "clipped_frames=2"})
        EXPECT_NE(("\n" + text).find("\n" + std::string(line) + "\n"), std::string::npos) << line << text;
    EXPECT_NE(text.find("\ndevice=USB Audio  \xC3\xA4xxx"), std::string::npos) << text;

    utc += 4 * NanosecondsPerSecond;
    EXPECT_FALSE(file.IsDue(now + 4s, state.source));
    EXPECT_TRUE(file.IsDue(now + 5s, state.source));
    file.Write(now + 5s, state);
    EXPECT_NE(folder.Content("SndInput.state").find("since=2026-11-22T02:30:00Z\n"), std::string::npos);
    state.source.state = SourceStatus::State::Waiting;
    EXPECT_TRUE(file.IsDue(now + 5s, state.source));
    file.Write(now + 5s, state);
    EXPECT_NE(folder.Content("SndInput.state").find("state=waiting\nsince=2026-11-22T02:30:04Z\n"),
              std::string::npos);

    folder.Put("SndInput.state", "pid=1\nstate=recording\n");
    file.End(now + 6s, state);
    EXPECT_EQ(folder.Content("SndInput.state"), "pid=1\nstate=recording\n") << "another's";
    std::filesystem::remove(folder / "SndInput.state");
    file.End(now + 6s, state);
    EXPECT_NE(folder.Content("SndInput.state").find("state=ended\n"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder / "SndInput.state.tmp"));
}

}  // namespace
}  // namespace veltrix
