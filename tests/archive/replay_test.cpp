// Recordings as one stream through the detector: parts, gaps, dates, threads, damage.

#include <gtest/gtest.h>

#include <algorithm>

#include "archive/day_plots.h"
#include "archive/pair_site.h"
#include "archive/summary.h"
#include "common/neutral_text.h"
#include "quiet_sound.h"
#include "support/plain_glyphs.h"
#include "support/scratch_folder.h"
#include "support/sound_file.h"

namespace veltrix {
namespace {

std::vector<HeardPulse> Heard(const std::vector<std::string>& names, const ReplayRules& rules = {}) {
    std::vector<HeardPulse> all;
    StationReplay replay(rules);
    replay.OnPulse = [&](const HeardPulse& heard) { all.push_back(heard); };
    for (const std::string& name : names) replay.Play(name);
    return all;
}

ReplayRules StartingAt(const CalendarParts& parts) {
    ReplayRules rules;
    rules.start = DateTimeOf(parts);
    return rules;
}

TEST(StartStamp, IsFoundInNamesAndNowhereElse) {
    const std::pair<const char*, const char*> table[] = {
        {"alpha_20260601_200000.flac", "2026/06/01 20:00:00"},
        {"/a/20250101_000000/2026-06-01T20-05-07Z.wav", "2026/06/01 20:05:07 UTC"},
        {"20260601-2000 attic.wav", "2026/06/01 20:00:00"},
        {"20260601200001.wav", "2026/06/01 20:00:01"},
        {"no12345678_20261301_200000.flac", ""},
        {"unit2024_20260601_200000.flac", "2026/06/01 20:00:00"},
        {"20260601.flac", ""},
        {"120260601_200000.flac", ""},
        {"evening.flac", ""},
    };
    for (const auto& [name, expected] : table) {
        const std::optional<FileStamp> stamp = StampInName(name);
        EXPECT_EQ(stamp ? GeneralDate(stamp->date) + (stamp->isUniversal ? " UTC" : "") : "", expected)
            << name;
    }
}

TEST(StartStamp, OrdersTheRecordingsOfAFolder) {
    const ScratchFolder folder;
    for (const char* name : {"b_20260601_000000.wav", "a_20260601_010000.FLAC", "notes.txt", ".x.wav"})
        folder.Put(name, "x");
    const auto names = RecordingsOf({folder.Text()});
    ASSERT_EQ(names.size(), 2U);
    EXPECT_TRUE(names[0].ends_with("b_20260601_000000.wav"));
    folder.Put("empty/notes.txt", "x");
    EXPECT_THROW(RecordingsOf({folder / "empty"}), BadRecording);
}

/// A pulse on the border of two files is one pulse; bearing, strength and sample number are those of one
/// file.
TEST(StationReplay, PartsWithoutAGapAreOneRecording) {
    const ScratchFolder folder;
    Samples all = Quiet(66150);
    AddBurst(all, 10000, 30);
    AddBurst(all, 44100 - 100, 120);
    AddBurst(all, 50000, 75);
    WriteSound(folder / "whole.wav", all);
    const auto middle = all.begin() + 2 * 44100;
    WriteSound(folder / "x_20260601_200000.wav", {all.begin(), middle});
    WriteSound(folder / "x_20260601_200003.wav", {middle, all.end()});  // a second late, as stamps may be
    const auto whole = Heard({folder / "whole.wav"});
    const auto parts = Heard({folder / "x_20260601_200000.wav", folder / "x_20260601_200003.wav"});
    ASSERT_EQ(whole.size(), 3U);
    ASSERT_EQ(parts.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(parts[i].pulse.dLocalSample, whole[i].pulse.dLocalSample);
        EXPECT_EQ(parts[i].pulse.dDir, whole[i].pulse.dDir);
        EXPECT_EQ(parts[i].pulse.dAmp, whole[i].pulse.dAmp);
        EXPECT_EQ(parts[i].run, 0);
    }
    EXPECT_NEAR(whole[2].pulse.dDir, 75, 0.5);
    EXPECT_EQ(GeneralDate(parts[2].date), "2026/06/01 20:00:03");
}

TEST(StationReplay, AGapMovesSampleNumbersAndDatesEvenBeyondTheWrap) {
    const ScratchFolder folder;
    Samples sound = Quiet(22050);
    AddBurst(sound, 10000, 30);
    for (const char* name : {"x_20260601_200000.wav", "x_20260601_200010.wav", "x_20260603_200010.wav"})
        WriteSound(folder / name, sound);
    const auto heard = Heard(RecordingsOf({folder.Text()}), StartingAt({2026, 6, 2, 0, 0, 0}));
    ASSERT_EQ(heard.size(), 3U);
    EXPECT_EQ(heard[1].pulse.dLocalSample - heard[0].pulse.dLocalSample, 220500);
    EXPECT_EQ(heard[2].frame - heard[1].frame, 2 * 86400LL * 22050);
    EXPECT_EQ(heard[1].pulse.dLocalSample + 2 * 86400.0 * 22050 - 2100000000, heard[2].pulse.dLocalSample);
    EXPECT_EQ(GeneralDate(heard[2].date), "2026/06/04 00:00:10");
    EXPECT_EQ(heard[2].run, 2);

    WriteSound(folder / "y_20260601_200005.wav", Quiet(22050 * 4));
    WriteSound(folder / "copy.wav", sound);
    EXPECT_THROW(Heard({folder / "y_20260601_200005.wav", folder / "x_20260601_200000.wav"}), BadRecording);
    WriteSound(folder / "z_21000601_200005.wav", Quiet(22050));
    const auto follows = Heard({folder / "z_21000601_200005.wav", folder / "copy.wav"});
    EXPECT_EQ(follows.at(0).run, 0) << "a file without a stamp that would overlap follows on";
}

/// What is handed out, and the message at the end.
std::pair<Samples, std::string> AllOf(const std::string& name, unsigned threads) {
    Samples all;
    try {
        ReadAhead ahead(name, threads);
        for (;;) {
            const std::span<const std::int16_t> samples = ahead.Next();
            if (samples.empty()) return {all, ""};
            all.insert(all.end(), samples.begin(), samples.end());
        }
    } catch (const BadRecording& bad) {
        return {all, bad.text};
    }
}

TEST(ReadAhead, GivesTheSameWithAnyNumberOfThreadsSoundOrDamaged) {
    const ScratchFolder folder;
    constexpr std::size_t Pieces = 6;
    for (const std::size_t frames : {Pieces * ReadAhead::PieceFrames, Pieces * ReadAhead::PieceFrames + 5}) {
        const Samples sound = Quiet(frames);
        WriteSound(folder / "sound.flac", sound);
        WriteSound(folder / "sound.wav", sound);
        const std::string bytes = folder.Content("sound.flac");
        folder.Put("cut.flac", bytes.substr(0, bytes.size() * 4 / 7));
        std::string spoilt = bytes;
        for (std::size_t i = 0; i < 400; ++i) spoilt[bytes.size() / 2 + i] ^= 0x5a;
        folder.Put("spoilt.flac", spoilt);
        EXPECT_EQ(AllOf(folder / "sound.wav", 2).first, sound);
        for (const char* name : {"sound.flac", "cut.flac", "spoilt.flac"}) {
            const auto plain = AllOf(folder / name, 1);
            if (std::string_view(name) == "sound.flac")
                EXPECT_EQ(plain.first, sound);
            else
                EXPECT_TRUE(std::ranges::equal(plain.first, std::span(sound).first(plain.first.size())));
            for (const unsigned threads : {2U, 3U, 9U})
                EXPECT_EQ(AllOf(folder / name, threads), plain) << name;
        }
    }
    for (const char* name : {"cut.flac", "spoilt.flac"})
        EXPECT_NE(AllOf(folder / name, 3).second.find("damaged or cut off after"), std::string::npos);
    EXPECT_THROW(ReadAhead(folder / "missing.flac", 2), BadRecording);
}

HeardPulse PulseAt(DateTime date, double bearing, double amplitude, double fitError) {
    HeardPulse heard;
    heard.date = date;
    heard.pulse.dDir = bearing;
    heard.pulse.dAmp = amplitude;
    heard.pulse.dFitError = fitError;
    return heard;
}

TEST(DayPlots, ShowHourAndBearingOfGoodPulsesOnTheirDay) {
    UnheardErrors errors;
    PlainGlyphs glyphs;
    DayPlots plots({-60, 0}, errors, glyphs);
    plots.Take(PulseAt(DateTimeOf({2026, 6, 1, 18, 0, 0}), 270, 0, 9.9));
    plots.Take(PulseAt(DateTimeOf({2026, 6, 1, 12, 0, 0}), 45, 0, 10));
    plots.Take(PulseAt(DateTimeOf({2026, 6, 2, 6, 0, 0}), 10, -60, 0));
    ASSERT_EQ(plots.Days().size(), 2U);
    const Surface& first = plots.Days().at("20260601");
    const AmpColorTable colors = BuildAmpColorTable();
    EXPECT_EQ(first.Point(18, 90), Rgb(colors.AmpRed[255], colors.AmpGreen[255], colors.AmpBlue[255]));
    EXPECT_EQ(first.Point(12, 45), Black) << "of too poor a fit";
    EXPECT_EQ(plots.Days().at("20260602").Point(6, 10),
              Rgb(colors.AmpRed[0], colors.AmpGreen[0], colors.AmpBlue[0]));
    EXPECT_NE(first.Point(0.5, 1), Black) << "the date";
}

}  // namespace
}  // namespace veltrix
