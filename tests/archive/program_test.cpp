// The program as users run it.

#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <nlohmann/json.hpp>

#include "quiet_sound.h"
#include "support/running_program.h"
#include "support/scratch_folder.h"
#include "support/sound_file.h"

namespace veltrix {
namespace {

struct Outcome {
    int code;
    std::string output;
    std::string errors;
};

Outcome Replayed(const ScratchFolder& folder, const std::vector<std::string>& arguments) {
    RunningProgram program("veltrix-replay", arguments, folder.Text());
    const int code = program.Wait();
    return {code, program.Output(), program.Errors()};
}

TEST(ReplayProgram, WritesLogSummaryAndAPlotForEachDay) {
    const ScratchFolder folder;
    Samples sound = Quiet(66150);
    AddBurst(sound, 11025, 30);
    AddBurst(sound, 55125, 120);
    folder.Put("night/readme.txt", "");
    WriteSound(folder / "night/x_20260601_235958.flac", sound);
    const Outcome plain = Replayed(folder, {"night"});
    EXPECT_EQ(plain.code, 0) << plain.errors;
    EXPECT_EQ(plain.output.substr(0, 24), "2026/06/01 23:59:58,030.");
    EXPECT_NE(plain.output.find("\n2026/06/02 00:00:00,300."), std::string::npos) << plain.output;

    const Outcome full = Replayed(folder, {"--log=log.csv", "--summary", "--plot", "day.png", "--min-db",
                                           "-60", "--threads", "1", "night"});
    EXPECT_EQ(full.code, 0) << full.errors;
    EXPECT_EQ(full.output, "");
    EXPECT_EQ(folder.Content("log.csv"), plain.output);
    EXPECT_NE(full.errors.find("strikes     2, of these clipped 0\n"), std::string::npos) << full.errors;
    EXPECT_NE(full.errors.find("\n2026/06/02 00:00          1        0 "), std::string::npos) << full.errors;
    const QImage first(QString::fromStdString((folder / "day-20260601.png").string()));
    const QImage second(QString::fromStdString((folder / "day-20260602.png").string()));
    EXPECT_EQ(first.size(), QSize(557, 557));
    EXPECT_NE(first.pixel(556, 30 * 557 / 180) & 0xffffffU, 0U);
    EXPECT_NE(second.pixel(0, 120 * 557 / 180) & 0xffffffU, 0U);
}

TEST(ReplayProgram, SaysWhatIsWrongAndGoesOnWithTheOtherFiles) {
    const ScratchFolder folder;
    Samples sound = Quiet(22050);
    AddBurst(sound, 11025, 30);
    WriteSound(folder / "a_20260601_200000.wav", sound);
    folder.Put("b_20260601_200100.wav", "no sound");
    WriteSound(folder / "c_20260601_200200.wav", sound);
    const Outcome outcome =
        Replayed(folder, {"a_20260601_200000.wav", "b_20260601_200100.wav", "c_20260601_200200.wav"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 2);
    EXPECT_NE(outcome.errors.find("b_20260601_200100.wav: "), std::string::npos);

    const std::vector<std::string> a{"--station", "A:48,9", "a_20260601_200000.wav"};
    const std::pair<std::vector<std::string>, const char*> wrong[] = {
        {{}, "a recording is missing"},
        {{"--threshold", "80x", "a.wav"}, "--threshold takes 1 to 100"},
        {{"--min-db=-20", "--max-db", "-20", "a.wav"}, "--max-db must lie above"},
        {{"--fixes", "x.csv", "a.wav"}, "unknown option '--fixes'"},
        {{"pair", "a.wav", "--station", "A:48,9"}, "stands before the first --station"},
        {{"pair", a[0], a[1], a[2]}, "two times --station"},
        {{"pair", a[0], a[1], a[2], "--station", "B:50,12"}, "a recording of B is missing"},
        {{"pair", a[0], a[1], a[2], "--station", "B:48,9", a[2]}, "stand at the same place"},
        {{"pair", a[0], a[1], a[2], "--station", "A:50,12", a[2]}, "have the same name"},
        {{"pair", "--station", "A:48;9", "a.wav"}, "NAME:LATITUDE,LONGITUDE"},
        {{"pair", "--station", "A:91,9", "a.wav"}, "the latitude of A takes"},
    };
    for (const auto& [arguments, text] : wrong) {
        const Outcome refused = Replayed(folder, arguments);
        EXPECT_EQ(refused.code, 64) << text;
        EXPECT_NE(refused.errors.find(text), std::string::npos) << refused.errors;
    }
    const Outcome apart =
        Replayed(folder, {"pair", a[0], a[1], a[2], "--station", "B:50,12", "c_20260601_200200.wav"});
    EXPECT_EQ(apart.code, 1);
    EXPECT_NE(apart.errors.find("too few strikes in common"), std::string::npos) << apart.errors;
    EXPECT_EQ(Replayed(folder, {"--log", "missing/x.csv", a[2]}).code, 1);
}

/// Thirty strikes in the north-west of A, straight north of B, which hears them 0.5 ms later.
TEST(ReplayProgram, LocatesThePairOfStations) {
    const ScratchFolder folder;
    Samples one = Quiet(22050 * 60), other = Quiet(22050 * 60);
    for (std::size_t i = 0; i < 30; ++i) {
        const std::size_t at = 22050 + 43000 * i + 997 * (i * i % 7);
        AddBurst(one, at, 315);
        AddBurst(other, at + 8 + 3 * i % 7, 0);
    }
    WriteSound(folder / "a_20260601_200000Z.wav", one);
    WriteSound(folder / "b_20260601_200000Z.wav", other);
    const Outcome outcome = Replayed(
        folder, {"pair", "--station", "A:48,9", "a_20260601_200000Z.wav", "--fixes=f.csv", "--station",
                 "B:48.5,5", "b_20260601_200000Z.wav", "--geojson", "f.json", "--map", "m.png", "--summary"});
    EXPECT_EQ(outcome.code, 0) << outcome.errors;
    EXPECT_GE(std::ranges::count(outcome.output, '\n'), 22) << outcome.output << outcome.errors;
    EXPECT_TRUE(outcome.output.starts_with("fix 2026/06/01 20:00:0")) << outcome.output;
    const auto json = nlohmann::json::parse(folder.Content("f.json"));
    for (const auto& feature : json.at("features")) {
        EXPECT_NEAR(feature.at("geometry").at("coordinates")[0], 5, 0.05);
        EXPECT_NEAR(feature.at("geometry").at("coordinates")[1], 50.6, 0.2);
        EXPECT_TRUE(feature.at("properties").at("time").get<std::string>().ends_with("Z"));
    }
    EXPECT_EQ(std::ranges::count(folder.Content("f.csv"), '\n'), 1 + std::ssize(json.at("features")));
    EXPECT_EQ(QImage(QString::fromStdString((folder / "m.png").string())).width(), 557);
}

}  // namespace
}  // namespace veltrix
