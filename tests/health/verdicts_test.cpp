// Which figures count as healthy, what the status bar says of them, and whom it believes.

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "health/sample_report.h"
#include "health/status_texts.h"
#include "support/memory_files.h"

namespace veltrix {
namespace {

/// What a change of the sample report makes of one cell of the bar.
struct Case {
    int cell;
    Verdict verdict;
    std::string text;
    std::function<void(HealthReport&)> change;
};

TEST(StatusCells, SayWhatIsWrongInWords) {
    const auto silent = [](HealthReport& r, const char* recorder) {
        r.sound.arriving = false;
        r.sound.secondsAgo = 3725;
        r.recorder->state = recorder;
    };
    const std::vector<Case> cases = {
        {0, Verdict::Good, "Sound ok", [](HealthReport&) {}},
        {0, Verdict::Bad, "! No sound 1 h 2 min", [&](HealthReport& r) { silent(r, "recording"); }},
        {0, Verdict::Bad, "! Digital silence 1 h 2 min", [&](HealthReport& r) { silent(r, "silent"); }},
        {0, Verdict::Bad, "! Recorder waits 1 h 2 min", [&](HealthReport& r) { silent(r, "waiting"); }},
        {0, Verdict::Bad, "! Recorder has ended 1 h 2 min", [&](HealthReport& r) { silent(r, "ended"); }},
        {0, Verdict::None, "Sound starting",
         [&](HealthReport& r) {
             silent(r, "recording");
             r.uptime = 5;
         }},
        {0, Verdict::Bad, "! Digital silence", [](HealthReport& r) { r.sound.isDigitalSilence = true; }},
        {0, Verdict::Bad, "! Detection has stopped", [](HealthReport& r) { r.detecting = false; }},
        {1, Verdict::Good, "Level -21 / -19 dB", [](HealthReport&) {}},
        {1, Verdict::Bad, "! Level clipping", [](HealthReport& r) { r.sound.minute.clippedFrames = 133; }},
        {1, Verdict::Good, "Level -21 / -19 dB", [](HealthReport& r) { r.sound.minute.clippedFrames = 132; }},
        {1, Verdict::Bad, "! Level too low", [&](HealthReport& r) { r.sound.minute.channels[1].peak = 103; }},
        {1, Verdict::None, "Level not measured", [](HealthReport& r) { r.sound.minute = {}; }},
        {2, Verdict::Good, "22050 Hz", [](HealthReport&) {}},
        {2, Verdict::Bad, "! 22074 Hz", [](HealthReport& r) { r.sound.rate->rate = 22074; }},
        {2, Verdict::Good, "22074 Hz",
         [](HealthReport& r) {
             r.sound.rate = MeasuredRate{22074, 73.6, 60};
         }},
        {2, Verdict::None, "Rate not measured", [](HealthReport& r) { r.sound.rate.reset(); }},
        {2, Verdict::Watch, "! Lost 500 frames", [](HealthReport& r) { r.framesLostHour = 500; }},
        {3, Verdict::Good, "Threshold -80 dB", [](HealthReport&) {}},
        {3, Verdict::Watch, "! Threshold in the noise", [](HealthReport& r) { r.noise.raw = 325; }},
        {4, Verdict::Good, "Strikes 12/min 634/h", [](HealthReport&) {}},
        {4, Verdict::None, "Strikes 0/min 0/h", [](HealthReport& r) { r.strikes = {}; }},
        {4, Verdict::Watch, "! Strikes 1001/min 634/h", [](HealthReport& r) { r.strikes.minute = 1001; }},
        {5, Verdict::Watch, "! Peers 2 of 3", [](HealthReport&) {}},
        {5, Verdict::Good, "Peers 2 of 2", [](HealthReport& r) { r.peers.pop_back(); }},
        {5, Verdict::None, "No peers", [](HealthReport& r) { r.peers.clear(); }},
        {5, Verdict::Watch, "! 4 lines dropped", [](HealthReport& r) { r.linesDropped.hour = 4; }},
        {6, Verdict::Good, "Disk 52 GB", [](HealthReport&) {}},
        {6, Verdict::Watch, "! Disk 537 MB", [](HealthReport& r) { r.disk->free = LowDisk - 1; }},
        {6, Verdict::Bad, "! Disk 0 B",
         [](HealthReport& r) {
             r.disk->free = 0;
             r.errors = 7;
         }},
        {6, Verdict::Watch, "! 1 error", [](HealthReport& r) { r.errors = 1; }},
        {6, Verdict::Watch, "! Clock not synced",
         [](HealthReport& r) {
             r.clockSynchronised = false;
             r.disk.reset();
         }},
        {6, Verdict::Watch, "! Publication late", [](HealthReport& r) { r.publishedAgo = 901; }},
    };
    for (const Case& one : cases) {
        HealthReport report = SampleReport();
        one.change(report);
        const StatusCell cell = StatusCells(report)[static_cast<std::size_t>(one.cell)];
        EXPECT_EQ(cell.text, one.text);
        EXPECT_EQ(cell.verdict, one.verdict) << one.text;
        EXPECT_FALSE(cell.toolTip.empty()) << one.text;
        EXPECT_EQ(VerdictColour(cell.verdict) == White, cell.verdict == Verdict::None);
    }
}

TEST(RecorderAccount, TakesTheKeysItKnowsAndNothingDamaged) {
    const auto parse = ParseRecorderAccount;
    const auto state = parse(
        "version=0.1.0\nframes_lost=18446744073709551615\r\nnonsense\n=\ndevice=a\x01\xff=b\n"
        "device_rate=44100\nstate=silent\nframes_written=-1\nfuture=1");
    ASSERT_TRUE(state);
    EXPECT_EQ(state->state, "silent");
    EXPECT_EQ(state->device, "a?\?=b");
    EXPECT_EQ(state->framesLost, UINT64_MAX);
    EXPECT_EQ(state->framesWritten, std::nullopt);
    EXPECT_EQ(state->deviceRate, 44100);
    for (const char* const wrong : {"", "state=", "state=broken\n", "STATE=silent", "frames_lost=1"})
        EXPECT_FALSE(parse(wrong)) << wrong;
    for (const char* const wrong : {"1e999", "nan", "-inf", "0x10", "44100 ", ""})
        EXPECT_FALSE(parse("state=ended\ndevice_rate=" + std::string(wrong))->deviceRate) << wrong;
}

TEST(RecorderAccount, IsBelievedOnlyWhileItChanges) {
    ManualClock clock;
    MemoryFiles files(clock);
    RecorderAccountFile file;
    const auto stands = [&](std::int64_t second) {
        return file.Read(files, "SndInput.state", second * 1000).has_value();
    };
    files.Put("SndInput.state", "state=recording\nupdated=1\n");
    EXPECT_FALSE(stands(0)) << "may be left over";
    files.Put("SndInput.state", "state=recording\nupdated=2\n");
    EXPECT_TRUE(stands(5));
    EXPECT_TRUE(stands(34));
    EXPECT_FALSE(stands(35));
    files.Put("SndInput.state", "state=recording\n" + std::string(RecorderAccountFile::MostBytes, 'x'));
    EXPECT_FALSE(stands(36)) << "no recorder writes so much";
    files.Put("SndInput.state", "state=waiting\n");
    files.FailOn(FileOperation::Read, "SndInput.state", errors::DeviceIo);
    EXPECT_FALSE(stands(37));
    EXPECT_TRUE(stands(38));
    files.Delete("SndInput.state");
    EXPECT_FALSE(stands(39));
}

}  // namespace
}  // namespace veltrix
