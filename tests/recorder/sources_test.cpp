// Where the samples come from. docs/recorder.md tells how to try a sound card without one.

#include <gtest/gtest.h>

#include <thread>

#include "common/failure.h"
#include "recorder/card_source.h"
#include "recorder/file_source.h"
#include "recorder/storm_source.h"
#include "support/number_raised_by.h"
#include "support/samples.h"
#include "support/scratch_folder.h"
#include "support/sound_file.h"

namespace veltrix {
namespace {

using namespace std::chrono_literals;

Samples Ramp(std::size_t frames) {
    Samples samples(2 * frames);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<std::int16_t>(static_cast<std::int16_t>(i * 7919) / 8);
    return samples;
}

struct Played {
    Samples samples;
    std::string said;
    std::chrono::milliseconds length{};
};

/// Plays files in small pieces, a millisecond apart, to their end.
Played Play(const std::filesystem::path& name, FileSource::Speed speed) {
    Played played;
    FileSource source(name.string(), speed, FileSource::AtEnd::End,
                      [&played](const std::string& line) { played.said += line; });
    for (Samples piece(2 * 333); !source.HasEnded(); played.length += 1ms) {
        const std::size_t frames = source.Read(piece, Moment(played.length));
        played.samples.insert(played.samples.end(), piece.data(), piece.data() + 2 * frames);
    }
    return played;
}

TEST(FileSource, PlaysEveryFrameOfEveryFormatAndKnowsACutOffFile) {
    const ScratchFolder folder;
    const Samples samples = Ramp(60000);
    for (const int format : {SF_FORMAT_WAV | SF_FORMAT_PCM_16, SF_FORMAT_FLAC | SF_FORMAT_PCM_16,
                             SF_FORMAT_WAV | SF_FORMAT_PCM_24, SF_FORMAT_WAV | SF_FORMAT_FLOAT})
        for (const auto speed : {FileSource::Speed::AsTaken, FileSource::Speed::Real}) {
            WriteSound(folder / "a.snd", samples, {.format = format});
            const Played played = Play(folder / "a.snd", speed);
            ASSERT_EQ(played.samples.size(), samples.size());
            for (std::size_t i = 0; i < samples.size(); ++i) ASSERT_NEAR(played.samples[i], samples[i], 1);
            EXPECT_TRUE(played.said.ends_with("has ended: 60000 frames")) << played.said;
            EXPECT_EQ(played.length > 2700ms, speed == FileSource::Speed::Real);
        }
    WriteSound(folder / "a.flac", samples);
    std::filesystem::resize_file(folder / "a.flac", std::filesystem::file_size(folder / "a.flac") / 2);
    const Played played = Play(folder / "a.flac", FileSource::Speed::AsTaken);
    const std::string frames = std::to_string(played.samples.size() / 2);
    EXPECT_GT(played.samples.size(), 2u * 20000);
    EXPECT_TRUE(played.said.ends_with("is cut off: " + frames + " of 60000 frames")) << played.said;
}

TEST(FileSource, RefusesWhatAStationCannotUse) {
    const ScratchFolder folder;
    const auto play = [&folder] { Play(folder / "a.wav", FileSource::Speed::Real); };
    for (const auto& [channels, rate] : {std::pair(1, 22050), {4, 22050}, {2, 2000}}) {
        WriteSound(folder / "a.wav", Ramp(100), {.rate = rate, .channels = channels});
        EXPECT_EQ(NumberRaisedBy(play), errors::InvalidCall) << channels << ' ' << rate;
    }
    folder.Put("a.wav", "no sound");
    EXPECT_EQ(NumberRaisedBy(play), errors::FileNotFound);
    std::filesystem::remove(folder / "a.wav");
    EXPECT_EQ(NumberRaisedBy(play), errors::FileNotFound);
}

TEST(StormSource, PlaysTheStormOfTheHourByTheStationsClockAndKeepsTheTruth) {
    const ScratchFolder folder;
    const Scenario demo = LoadScenario("demo");
    const TruthTable table(demo);
    UtcTime now = ParseUtc("2024-06-01T12:00:00.3Z").value();
    std::string said;
    // A recorder's three seconds, from where the last one ended; returns what is true of them.
    const auto play = [&] {
        StormSource source("demo", "Bravo", now, folder / "a.csv", [&said](const auto& s) { said += s; });
        Samples samples(2 * 100000), expected(2 * 66146);
        EXPECT_EQ(source.Read(samples, Moment{}), 0u);
        EXPECT_EQ(source.Read(samples, Moment{} + 1s), 22048u);  // 48 ppm slow: 22048.9
        EXPECT_EQ(source.Read(std::span(samples).subspan(2 * 22048), Moment{} + 3s), 66146u - 22048);
        samples.resize(expected.size());
        Renderer renderer(demo, 1, now);
        const UtcTime from = renderer.Time();
        renderer.Render(expected);
        EXPECT_EQ(samples, expected);
        now = renderer.Time();
        return table.Rows(from, now);
    };
    folder.Put("a.csv", "another,table\n");
    std::string rows = table.Header() + play();
    rows += play();
    EXPECT_EQ(folder.Content("a.csv"), rows);
    EXPECT_EQ(folder.Content("a.old.csv"), "another,table\n");
    folder.Put("a.csv", table.Header() + std::string(4 * 1024 * 1024, '\n'));  // large enough
    rows = play();
    EXPECT_EQ(folder.Content("a.csv") + said, table.Header() + rows);
    std::filesystem::remove_all(folder.Path());
    play();
    EXPECT_EQ(said, (folder / "a.csv").string() + ": cannot be written");
}

TEST(CardRing, BringsEveryFrameInOrderFromOneThreadToAnother) {
    CardRing ring(64);
    constexpr std::int16_t Frames = 20000;
    std::thread card([&ring] {
        for (std::int16_t number = 0; number < Frames; ++number)
            while (!ring.Write(Samples{number, static_cast<std::int16_t>(~number)}.data(), 1))
                std::this_thread::yield();
    });
    Samples got, piece(20);
    while (got.size() < std::size_t{2} * Frames)
        got.insert(got.end(), piece.data(), piece.data() + 2 * ring.Read(piece));
    card.join();
    for (std::size_t i = 0; i < got.size(); ++i)
        ASSERT_EQ(got[i], static_cast<std::int16_t>(i % 2 == 0 ? i / 2 : ~(i / 2)));
}

}  // namespace
}  // namespace veltrix
