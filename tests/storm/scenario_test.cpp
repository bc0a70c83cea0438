// Scenario files, the table of the truth, and what veltrix-storm refuses.

#include "storm/scenario.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <tuple>

#include "common/failure.h"
#include "storm/truth.h"
#include "support/running_program.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

const std::string Good =
    "[storm]\nseed=1\nstart=2024-05-01T00:00:00Z\n"
    "[cell Cell]\nlatitude=48\nlongitude=6\nradius=30\nrate=10\nstrength=9000\n"
    "[station Alpha]\nlatitude=50\nlongitude=9\n";

TEST(ScenarioFile, NamesTheFileTheSectionAndTheKeyOfAFault) {
    const std::array<std::string, 3> table[] = {
        {Good, "", "[storm] is missing"},
        {"[storm]", "seed=3\n[storm]", "seed: stands before the first section"},
        {"seed=1\n", "", "[storm] seed: is missing"},
        {"seed=1", "seed=-1", "[storm] seed: '-1' is no whole number from 0 to 18446744073709551615"},
        {"seed=1", "sed=1", "[storm] sed: unknown key"},
        {"2024-05-01", "2023-02-29", "[storm] start: '2023-02-29T00:00:00Z' is no stamp like "},
        {"rate=10", "rate=nan", "[cell Cell] rate: nan is outside 0 to 600"},
        {"rate=10", "rate=1,5", "[cell Cell] rate: '1,5' is no number"},
        {"rate=10", "rate=", "[cell Cell] rate: is missing"},
        {"Alpha", "S,T", "[station S,T]: a name has up to 32 letters, digits, blanks, - and _"},
        {"station", "sation", "[sation Alpha]: unknown section; known are [storm], "},
    };
    for (const auto& [was, now, message] : table) {
        std::string text = Good;
        text.replace(text.find(was), was.size(), now);
        try {
            ParseScenario(text, "x.ini");
            ADD_FAILURE() << "accepted in spite of " << message;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.Description().substr(0, 7 + message.size()), "x.ini: " + message);
        }
    }
    const Scenario scenario = ParseScenario(Good + "[STATION Two]\nlatitude=1\nlongitude=2\nnoise=1.5\n", "");
    EXPECT_EQ(scenario.stations.at(0).noise, 70);
    EXPECT_EQ(scenario.StationIndex("two"), 1u);
    // A folder of that name does not hide the built-in one.
    const ScratchFolder folder;
    folder.Put("demo/x", "");
    RunningProgram program("veltrix-storm", {"demo", "--seconds=0.001"}, folder.Text());
    EXPECT_EQ(program.Wait(), 0) << program.Errors();
}

TEST(UtcTime, ReadsStampsAndRefusesWhatIsNone) {
    EXPECT_EQ(ParseUtc("1970-01-01T00:00:01.25Z"), 1'250'000'000);
    EXPECT_EQ(ParseUtc("2024/02/29 23:59:59"), ParseUtc("2024-03-01T00:00:00Z").value() - 1'000'000'000);
    EXPECT_EQ(UtcText(ParseUtc("2024-02-29T23:59:59.9999999").value()), "2024-02-29T23:59:59.999999Z");
    for (const char* const bad : {"2024-01-01", "2024-01-01T24:00:00", "2024-01-01T00:00:60Z",
                                  "2024-01-01T00:00:00+01:00", "1969-12-31T23:59:59", "2024-01-01T00:00:0x"})
        EXPECT_FALSE(ParseUtc(bad)) << bad;
}

TEST(Truth, IsWrittenAsDocumented) {
    const Scenario scenario = ParseScenario(Good, "");
    const TruthTable table(scenario);
    EXPECT_EQ(table.Header(),
              "time,latitude,longitude,cell,strength,polarity,Alpha:arrival,Alpha:distance,Alpha:bearing,"
              "Alpha:antenna_bearing,Alpha:peak,Alpha:filtered_peak\n");
    EXPECT_EQ(table.Row({scenario.start + 1'234'567'890, 50, 10, 0, 1000, -1}),
              "2024-05-01T00:00:01.234567Z,50.000000,10.000000,Cell,1000.0,-1,"
              "2024-05-01T00:00:01.234807Z,71.695,89.6170,89.6170,1408.0,1093.1\n");
}

TEST(StormProgram, RefusesWithOneLine) {
    const ScratchFolder folder;
    const std::tuple<std::vector<std::string>, int, const char*> table[] = {
        {{}, 64, "a scenario is missing"},
        {{"demo", "--seconds=0"}, 64, "--seconds: '0'"},
        {{"demo", "--station", "Delta"}, 1, "no station 'Delta'; there are: Alpha, Bravo, Charlie"},
        {{"none.ini"}, 1, "none.ini: no such scenario file; built in: demo"},
        {{"demo", "--out", "nowhere/a.wav"}, 1, "nowhere/a.wav: "},
        {{"demo", "--truth", "/dev/full"}, 1, "/dev/full: cannot be written"},
    };
    for (const auto& [arguments, code, says] : table) {
        RunningProgram program("veltrix-storm", arguments, folder.Text());
        EXPECT_EQ(program.Wait(), code) << says;
        EXPECT_NE(program.Errors().find(says), std::string::npos) << program.Errors();
        EXPECT_EQ(std::ranges::count(program.Errors(), '\n'), 1) << program.Errors();
    }
}

}  // namespace
}  // namespace veltrix
