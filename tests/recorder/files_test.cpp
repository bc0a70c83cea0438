// Days of recordings in many files, and rates that are not the station's.

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>

#include "common/failure.h"
#include "recorder/file_source.h"
#include "support/samples.h"
#include "support/scratch_folder.h"
#include "support/sound_file.h"

namespace veltrix {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr double Height = 16000;

/// `left` Hz on the left, the same behind by a quarter turn on the right, from frame `first` on.
Samples Tone(double frequency, int rate, std::size_t frames, std::size_t first = 0) {
    Samples samples;
    for (std::size_t i = first; i < first + frames; ++i) {
        const double turn = 2 * std::numbers::pi * frequency * static_cast<double>(i) / rate;
        samples.insert(samples.end(), {Clipped(Height * std::cos(turn)), Clipped(Height * std::sin(turn))});
    }
    return samples;
}

struct Files : testing::Test {
    void Begin(const std::string& names, FileSource::AtEnd atEnd = FileSource::AtEnd::End) {
        said.clear();
        got.clear();
        source.emplace(names, FileSource::Speed::AsTaken, atEnd,
                       [this](const std::string& line) { said += line + "\n"; });
    }
    /// Reads up to so many frames to `got`.
    void Read(std::size_t frames) {
        Samples piece(2 * frames);
        piece.resize(2 * source->Read(piece, now));
        got.insert(got.end(), piece.begin(), piece.end());
    }
    void Play() {
        while (!source->HasEnded()) Read(333);
    }
    std::size_t TimesSaid(const std::string& words) const {
        std::size_t times = 0;
        for (std::size_t at = 0; (at = said.find(words, at)) != std::string::npos; ++at) ++times;
        return times;
    }

    const ScratchFolder folder;
    std::optional<FileSource> source;
    Moment now{};
    std::string said;
    Samples got;
};

TEST_F(Files, ResamplesTonesFlatWithoutAliasesAndInPhase) {
    for (const int rate : {44100, 48000, 96000, 192000, 16000}) {
        const double flatTo = rate == 192000 ? 9000 : rate == 16000 ? 7000 : 10400;
        const auto seconds = static_cast<std::size_t>(rate);
        for (const double frequency : {100.0, 3000.0, flatTo, 11800.0, 20000.0}) {
            if (frequency > rate / 2) continue;
            WriteSound(folder / "a.wav", Tone(frequency, rate, seconds), {.rate = rate});
            Begin((folder / "a.wav").string());
            Play();
            ASSERT_NEAR(static_cast<double>(got.size()) / 2, RecorderSampleRate, 1) << rate;
            double error = 0;
            double power = 0;
            for (std::size_t i = 2000; i < 20000; ++i) {  // inside, away from the edges
                const double turn =
                    2 * std::numbers::pi * frequency * static_cast<double>(i) / RecorderSampleRate;
                const std::complex<double> sample(got[2 * i], got[2 * i + 1]);
                error += std::norm(sample - std::polar(Height, turn)) / 18000;
                power += std::norm(sample) / 18000;
            }
            // What may pass does so to half a percent in size and phase, of what may not less than a unit.
            if (frequency < 11000)
                EXPECT_LT(std::sqrt(error), 0.005 * Height) << rate << ' ' << frequency;
            else
                EXPECT_LT(std::sqrt(power), 1) << rate << ' ' << frequency;
        }
    }
}

TEST_F(Files, ClipsWhatOvershootsAndKnowsThatTheFileWasClipped) {
    Samples square;
    for (std::size_t i = 0; i < 48000; ++i)
        square.insert(square.end(), 2, static_cast<std::int16_t>(i / 60 % 2 == 0 ? 32767 : -32768));
    WriteSound(folder / "a.wav", square, {.rate = 48000});
    Begin((folder / "a.wav").string());
    Play();
    for (std::size_t i = 2000; i < 40000; ++i) ASSERT_GT(std::abs(got[i]) + std::abs(got[i + 2]), 12000) << i;
    EXPECT_NEAR(static_cast<double>(source->Status().framesClipped), 22050, 2);
}

TEST_F(Files, PlaysAFolderInTheOrderOfNumbersWithoutAGapAndLeavesOutWhatIsNoRecording) {
    const std::pair<const char*, int> table[] = {
        {"REC 9.wav", 44100}, {"rec 010.wav", 44100}, {"rec 11.wav", 44100}, {"rec 100.wav", 22050}};
    std::size_t first = 0;
    for (const auto& [name, rate] : table) {
        if (rate == 22050) first /= 2;
        const std::size_t frames = static_cast<std::size_t>(rate) / 2 + (rate == 44100 ? 2 : 0);
        WriteSound(folder / name, Tone(1000, rate, frames, first), {.rate = rate});
        first += frames;
    }
    folder.Put("rec 12.wav", "damaged");
    folder.Put(".hidden.wav", "damaged");
    fs::create_directory(folder / "rec 13.wav");
    Begin(folder.Text());
    EXPECT_EQ(source->Status().device, (folder / "REC 9.wav").string());
    EXPECT_EQ(source->Status().rate, 44100);
    Play();
    const Samples expected = Tone(1000, RecorderSampleRate, first);
    ASSERT_EQ(got.size(), expected.size());
    // Only where the low-pass meets the end of the tone at 44100 Hz is there a ripple.
    const std::size_t change = 2 * (first - 11025);
    for (std::size_t i = 400; i < got.size(); ++i)
        if (i + 400 < change || i >= change) {
            ASSERT_NEAR(got[i], expected[i], 8) << i;
        }
    EXPECT_EQ(TimesSaid("playing "), 4u);
    EXPECT_EQ(TimesSaid("rec 12.wav: "), 1u);
    EXPECT_EQ(TimesSaid("hidden") + TimesSaid("rec 13"), 0u);
}

TEST_F(Files, TakesListsPatternsAndPlayLists) {
    fs::create_directory(folder / "b");
    for (const char* const name : {"a[1].wav", "a[2].wav", "b/1.wav", "c.wav"}) {
        const auto value = static_cast<std::int16_t>(name[0] == 'a' ? name[2] - '0' : name[0]);
        WriteSound(folder / name, Samples(20, value));
    }
    folder.Put("all.m3u", "\xEF\xBB\xBF#EXTM3U\r\nc.wav\r\n\r\nb/?.wav\n");
    const std::string base = folder.Text() + "/";
    const std::tuple<std::string, std::vector<int>> table[] = {
        {base + "a[*].wav", {1, 2}},
        {base + "c.wav|" + base + "b|" + base + "a[1].wav", {'c', 'b', 1}},
        {base + "all.m3u", {'c', 'b'}},
        {base + "*/*.wav|" + base + "missing.wav", {'b'}},
    };
    for (const auto& [names, values] : table) {
        Begin(names);
        Play();
        ASSERT_EQ(got.size(), 20 * values.size()) << names << said;
        for (std::size_t i = 0; i < got.size(); ++i) EXPECT_EQ(got[i], values[i / 20]) << names;
    }
}

TEST_F(Files, BeginsAgainOrWaitsForFilesThatAppear) {
    const auto put = [this](const char* name, std::int16_t value) {
        WriteSound(folder / name, Samples(20, value));
        fs::last_write_time(folder / name, fs::file_time_type::clock::now() - 60s);
    };
    put("1.wav", 1);
    put("2.wav", 2);
    Begin(folder.Text(), FileSource::AtEnd::Again);
    Read(45);
    Samples expected;
    for (const int value : {1, 2, 1, 2})
        expected.insert(expected.end(), 20, static_cast<std::int16_t>(value));
    expected.insert(expected.end(), 10, 1);
    EXPECT_EQ(got, expected);
    EXPECT_EQ(TimesSaid("playing"), 2u) << "once, not for ever";
    // Nothing playable is left.
    fs::remove(folder / "1.wav");
    folder.Put("2.wav", "damaged");
    Read(1000);
    EXPECT_TRUE(source->HasEnded());

    fs::last_write_time(folder / "2.wav", fs::file_time_type::clock::now() - 60s);
    Begin(folder.Text() + "/*.wav", FileSource::AtEnd::Wait);
    Read(10);
    EXPECT_EQ(source->Status().state, SourceStatus::State::Waiting);
    put("3.wav", 3);
    Read(10);
    EXPECT_TRUE(got.empty()) << "not looked at all the time";
    now += 2s;
    Read(10);
    EXPECT_EQ(got, Samples(20, 3));
    EXPECT_EQ(source->Status().state, SourceStatus::State::Recording);
    put("4.wav", 4);
    fs::last_write_time(folder / "4.wav", fs::file_time_type::clock::now());
    Read(10);
    EXPECT_EQ(got.size(), 20u) << "it may still be growing";
    put("4.wav", 4);
    now += 2s;
    Read(10);
    EXPECT_EQ(got.back(), 4);
    EXPECT_EQ(TimesSaid("2.wav"), 1u);
}

}  // namespace
}  // namespace veltrix
