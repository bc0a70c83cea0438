// SndInput: its command line, and its dealings with stations, other recorders and signals.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "recorder/recorder_options.h"
#include "recorder/sample_source.h"
#include "recorder/source_choice.h"
#include "storm/renderer.h"
#include "storm/truth.h"
#include "support/running_program.h"
#include "support/samples.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

namespace fs = std::filesystem;

TEST(RecorderOptions, UnderstandsTheStationsCommandLine) {
    using Arguments = std::vector<std::string>;
    const std::tuple<Arguments, std::string, std::size_t, double> table[] = {
        {{"/ch=2", "/dt=2", "/gain=1", "/maxsize=128K", "/sr=22050"}, "audio.dat", 131072, 1},
        {{"/CH=2", "/Gain=0.5", "/MaxSize=1m", R"(/of=\ram\audio.dat)"}, "/ram/audio.dat", 1048576, 0.5},
        {{"/of=/a", "/b", "x=1", "/sr=22050", "/maxsize=5000"}, "/a /b x=1", 5000, 1},
        {{"--level", "2.5", "/of=/a", "7"}, "/a 7", 131072, 1},
    };
    for (const auto& [arguments, blockFile, maxBytes, gain] : table) {
        const RecorderOptions read = ReadRecorderOptions(arguments);
        EXPECT_EQ(std::tie(read.blockFile, read.maxBytes, read.gain), std::tie(blockFile, maxBytes, gain));
    }
    for (const char* const wrong :
         {"/ch=1", "/ch=", "/dt=4", "/sr=22050x", "/gain=0", "/gain=nan", "/maxsize=0", "/maxsize=128KB",
          "/maxsize=65M", "/maxsize=99999999999999999999", "/of=", R"(/of=a\)", "audio.dat", "-h", "/level=x",
          "--level=0"})
        EXPECT_THROW(ReadRecorderOptions({wrong}), WrongRecorderOption) << wrong;
}

TEST(SourceChoice, EnvironmentGoesBeforeTheFile) {
    const RecorderIni ini =
        ParseRecorderIni("; comment\nSource = storm:demo,Bravo\n[SNDINPUT]\ndevice = USB\nspeed=max\n", "");
    const SourceChoice storm = ChooseSource({}, ini);
    EXPECT_EQ(storm.name + '|' + storm.station + '|' + storm.device, "demo|Bravo|USB");
    EXPECT_TRUE(storm.fullSpeed);
    const SourceChoice card = ChooseSource("CARD;device=Line In (2);idle=2.5", ini);
    EXPECT_EQ(card.device, "Line In (2)");
    EXPECT_EQ(card.idle, std::chrono::milliseconds(2500));
    EXPECT_EQ(ChooseSource("file:a, C:b.wav;speed=1;Loop=Yes", ini).name, "a, C:b.wav");
    EXPECT_EQ(ChooseSource("card;rate=48000", ini).rate, 48000);
    for (const char* const wrong :
         {"file:", "storm", "card:USB", "card;colour=red", "file:x;speed=2", "card;idle=0", "card;idle=x",
          "card;rate=48k", "file:x;loop=1", "file:x;loop=yes;wait=yes"})
        EXPECT_THROW(ChooseSource(wrong, ini), WrongRecorderOption) << wrong;
    EXPECT_THROW(ParseRecorderIni("sorce=card\n", "SndInput.ini"), WrongRecorderOption);
}

struct SndInput : testing::Test {
    struct Recorder : RunningProgram {
        Recorder(const ScratchFolder& folder, const std::string& source,
                 const std::vector<std::string>& arguments = {"/maxsize=128K"})
            : RunningProgram("SndInput", arguments, folder.Text(), {"SNDINPUT_SOURCE=" + source}) {}
    };

    bool Stands(const char* block) const {
        return WaitFor([&] { return fs::exists(folder / block); });
    }
    bool StateIs(const std::string& state) const {
        return folder.Content("SndInput.state").find("\nstate=" + state + "\n") != std::string::npos;
    }

    const ScratchFolder folder;
};

TEST_F(SndInput, HandsASoundFileOfAStormOverToTheLastByte) {
    RunningProgram storm("veltrix-storm",
                         {"demo", "--station", "bravo", "--from", "2024-02-03T04:05:06.5Z", "--seconds=20",
                          "--out", "in.wav", "--truth", "-"},
                         folder.Text());
    ASSERT_EQ(storm.Wait(), 0) << storm.Errors();
    const Scenario demo = LoadScenario("demo");
    const TruthTable truth(demo);
    const UtcTime from = ParseUtc("2024-02-03T04:05:06.5Z").value();
    EXPECT_EQ(storm.Output(), truth.Header() + truth.Rows(from, from + 20 * NanosecondsPerSecond));
    Samples samples(2 * 20 * RecorderSampleRate);
    Renderer(demo, 1, from).Render(samples);
    for (std::int16_t& sample : samples) sample = Clipped(30 * sample);

    fs::create_directory(folder / "ram drive");
    Recorder recorder(folder, "file:in.wav;speed=max",
                      {"/maxsize=64K", "/gain=30", "/of=" + folder.Text() + R"(\ram)", "drive/audio.dat"});
    std::string got;
    EXPECT_TRUE(WaitFor([&] {
        const bool isLast = recorder.HasEnded();
        if (!fs::exists(folder / "ram drive/audio.dat")) return isLast;
        EXPECT_LE(fs::file_size(folder / "ram drive/audio.dat"), 65536u);
        got += folder.Content("ram drive/audio.dat");
        return !fs::remove(folder / "ram drive/audio.dat");
    }));
    EXPECT_TRUE(got == BytesOf(samples)) << got.size() << recorder.Errors();
    EXPECT_EQ(recorder.Wait(), 0);
}

TEST_F(SndInput, GivesWayToALaterOneAndSurvivesTheDeathOfAnEarlierOne) {
    Recorder first(folder, "storm:demo");
    ASSERT_TRUE(Stands("audio.dat"));
    Recorder second(folder, "storm:demo,Bravo");
    EXPECT_EQ(first.Wait(), 0);
    // Another block file is another recorder's business.
    Recorder other(folder, "storm:demo", {"/of=other.dat"});
    ASSERT_TRUE(Stands("other.dat"));
    EXPECT_TRUE(Stands("storm-truth.csv"));
    EXPECT_FALSE(second.HasEnded());

    second.Kill();
    fs::remove(folder / "audio.dat");
    Recorder third(folder, "storm:demo");
    ASSERT_TRUE(Stands("audio.dat"));
    // The same file by another name.
    EXPECT_EQ(Recorder(folder, "", {"/stop", "/of=" + folder.Text() + "/./audio.dat"}).Wait(), 0);
    EXPECT_EQ(third.Wait(), 0);
    EXPECT_EQ(Recorder(folder, "", {"/stop"}).Wait(), 1);
    EXPECT_FALSE(other.HasEnded());
    EXPECT_EQ(other.Terminate(), 0);
    EXPECT_FALSE(fs::exists(folder / "audio.tmp"));
}

TEST_F(SndInput, EndsWithATellingCode) {
    const std::tuple<const char*, const char*, int, const char*> table[] = {
        {"storm:demo;idle=1", "/ch=2", 0, "no station takes the blocks"},
        {"storm:demo", "/sr=44100", 64, "/sr=44100: only 22050 is possible"},
        {"tape", "/ch=2", 64, "source 'tape' is none of"},
        {"storm:demo,Nowhere", "/ch=2", 66, "no station 'Nowhere'"},
    };
    for (const auto& [source, argument, code, says] : table) {
        Recorder recorder(folder, source, {argument});
        EXPECT_EQ(recorder.Wait(), code) << source;
        EXPECT_NE(recorder.Errors().find(says), std::string::npos) << recorder.Errors();
    }
    Recorder patient(folder, "card;device=no such card");
    EXPECT_TRUE(WaitFor([&] {
        return folder.Content("SndInput.log").find("'no such card' is not there; try") != std::string::npos;
    }));
    EXPECT_TRUE(WaitFor([&] { return StateIs("waiting"); }));
    EXPECT_EQ(patient.Terminate(), 0);
    EXPECT_TRUE(StateIs("ended"));
}

TEST_F(SndInput, ShowsTheLevelWithoutTouchingAnything) {
    RunningProgram storm("veltrix-storm", {"demo", "--seconds=20", "--out", "in.wav"}, folder.Text());
    ASSERT_EQ(storm.Wait(), 0) << storm.Errors();
    Recorder recorder(folder, "storm:demo");
    ASSERT_TRUE(Stands("audio.dat"));
    Recorder level(folder, "file:in.wav;speed=max", {"--level"});
    EXPECT_EQ(level.Wait(), 0);
    EXPECT_TRUE(level.HasPrinted("441000 frames: left")) << level.Output();
    Recorder nothing(folder, "card;device=no such card", {"--level", "0.1"});
    EXPECT_EQ(nothing.Wait(), 1);
    EXPECT_TRUE(nothing.HasPrinted("no sound came"));
    Recorder endless(folder, "storm:demo", {"/level"});
    EXPECT_TRUE(endless.HasPrinted("left  N-S  peak -"));
    EXPECT_EQ(endless.Terminate(), 0);
    EXPECT_FALSE(recorder.HasEnded());
    EXPECT_EQ(recorder.Terminate(), 0);
    EXPECT_EQ(folder.Content("SndInput.log").find("in.wav"), std::string::npos);
}

TEST_F(SndInput, ResamplesACardThatHasOneRateOnly) {
    std::string tone;  // of 1 kHz, whole periods
    for (int i = 0; i < 48000; ++i)
        tone += BytesOf(Samples(2, Clipped(16000 * std::sin(2 * std::numbers::pi * i / 48))));
    folder.Put("in.raw", tone);
    folder.Put("asound.conf",
               "pcm.!default { type plug slave { rate 48000 pcm { type file slave.pcm { type null } file "
               "\"/dev/null\" infile \"" +
                   (folder / "in.raw").string() +
                   "\" format \"raw\" } } }\n"
                   "ctl.!default { type null }\n");
    const std::vector<std::string> environment = {"SNDINPUT_SOURCE=card",
                                                  "ALSA_CONFIG_PATH=" + (folder / "asound.conf").string()};
    RunningProgram list("SndInput", {"/list"}, folder.Text(), environment);
    EXPECT_EQ(list.Wait(), 0);
    EXPECT_TRUE(
        list.HasPrinted("default (128 channels), default\n    native rate 48000 Hz; offers 48000 Hz; "
                        "recorded at 48000 Hz, resampled\n"))
        << list.Output();
    RunningProgram recorder("SndInput", {"/maxsize=128K"}, folder.Text(), environment);
    EXPECT_TRUE(WaitFor([&] {
        fs::remove(folder / "audio.dat");
        const std::string state = folder.Content("SndInput.state");
        return state.find("device_rate=48000\n") != std::string::npos &&
               state.find("state=recording\n") != std::string::npos &&
               state.find("peak_left_db=-") != std::string::npos &&
               state.find("peak_left_db=-inf") == std::string::npos;
    })) << folder.Content("SndInput.state");
    EXPECT_EQ(recorder.Terminate(), 0);
    EXPECT_NE(
        folder.Content("SndInput.log").find("recording from sound card 'default' at 48000 Hz, resampled"),
        std::string::npos);
}

}  // namespace
}  // namespace veltrix
