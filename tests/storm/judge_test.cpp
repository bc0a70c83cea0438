// The judge, tried on a storm whose reports are made up here, so that every finding is known beforehand.

#include "storm/judge.h"

#include <gtest/gtest.h>

#include <GeographicLib/GeodesicExact.hpp>
#include <cmath>
#include <sstream>

#include "common/failure.h"
#include "storm/propagation.h"
#include "support/running_program.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

constexpr UtcTime Second = NanosecondsPerSecond;
constexpr double Turn = 2100000000;

/// A storm of two stations whose reports are right, until a test spoils them.
struct Night {
    Scenario scenario = ParseScenario(
        "[storm]\nseed=7\nstart=2024-05-01T00:00:00Z\n"
        "[cell C]\nlatitude=48\nlongitude=6\nradius=300\nrate=60\nstrength=10000\n"
        "[station A]\nlatitude=50\nlongitude=9\nclock_error=900\n"
        "[station B]\nlatitude=52\nlongitude=5\nclock_error=-48\n",
        "test");
    Propagation propagation;
    UtcTime from = scenario.start + 86400 * Second;
    UtcTime to = from + 200 * Second;
    /// When each station's counter stood at 0. That of B wraps after 40 seconds.
    UtcTime starts[2] = {from + 7 * Second, from + 40 * Second - std::llround(Turn* Period(1))};
    std::vector<Strike> strikes = StrikeGenerator(scenario).Between(starts[0], to);

    double Period(std::size_t station) const {
        return 1e9 / (22050 * (1 + scenario.stations[station].clockError * 1e-6));
    }
    /// The line of a detection, which comes 0.4 ms after the onset, in the log half a second later.
    DetectionLine Line(std::size_t station, const Strike& strike) const {
        const UtcTime time = propagation.At(scenario.stations[station], strike).time + 400'000;
        const double sample = std::floor(static_cast<double>(time - starts[station]) / Period(station));
        return {time + Second / 2, std::fmod(sample, Turn)};
    }
    ReportedFix Fix(const Strike& strike, double kilometres) const {
        ReportedFix fix{Line(0, strike), 0, 0, "B"};
        GeographicLib::GeodesicExact::WGS84().Direct(strike.latitude, strike.longitude, 77, 1000 * kilometres,
                                                     fix.latitude, fix.longitude);
        return fix;
    }
    PairLine Pair(const Strike& local, const Strike& remote) const {
        return {Line(0, local), Line(1, remote).sample};
    }
    Evidence Reports() const {
        Evidence evidence{from, to, {{0, {}}, {1, {}}}, {{1, {}}}, {}};
        for (std::size_t i = 0; i < strikes.size(); ++i) {
            for (HeardBy& heard : evidence.heard) heard.log.push_back(Line(heard.station, strikes[i]));
            evidence.paired[0].pairs.push_back(Pair(strikes[i], strikes[i]));
            evidence.fixes.push_back(Fix(strikes[i], static_cast<double>(i)));
        }
        return evidence;
    }
};

TEST(Judge, TellsWrongLinesFromRightOnesAndOtherRunsFromThisOne) {
    const Night night;
    const auto all = night.strikes.size();
    ASSERT_GT(all, 150U);
    Evidence reports = night.Reports();
    // Triggers of nothing, an earlier run with another count, and a strike after the end.
    std::vector<DetectionLine>& log = reports.heard[0].log;
    log.erase(log.begin(), log.begin() + 20);
    const DetectionLine last = log.back();
    log.push_back({last.written, last.sample + 3 * 22050});
    log.push_back({last.written, last.sample + 3.5 * 22050});
    for (double sample = 0; sample < 400; ++sample) log.push_back({night.from - Second, sample * 22050});
    for (const Strike& late : StrikeGenerator(night.scenario).Between(night.to, night.to + 5 * Second)) {
        log.push_back(night.Line(0, late));
        reports.fixes.push_back(night.Fix(late, 5000));
    }
    // The second strike once more with another's detection, the third with none's.
    reports.paired[0].pairs[1].remoteSample = reports.paired[0].pairs[2].remoteSample;
    reports.paired[0].pairs[2].remoteSample += 11025;
    // One strike twice, by another station, too; one fix of no strike.
    reports.fixes.push_back(night.Fix(night.strikes[0], 3000));
    reports.fixes.back().remote = "C";
    reports.fixes[1].sample += 400;  // 18 ms
    const Judgement found = Judge(night.scenario, reports);
    EXPECT_EQ(found.strikes, all);
    EXPECT_NEAR(static_cast<double>(found.from - night.starts[0]), 0, 1e6) << "since both listen";
    EXPECT_TRUE(found.detected.at(0).isInStep && found.detected.at(1).isInStep);
    EXPECT_EQ(found.detected.at(0).strikes, all - 20);
    EXPECT_EQ(found.detected.at(0).noStrike, 2U);
    EXPECT_EQ(found.detected.at(1).strikes, all);
    EXPECT_EQ(found.detected.at(1).noStrike, 0U);
    EXPECT_EQ(found.paired.at(0).strikes, all - 2);
    EXPECT_EQ(found.paired.at(0).wrong, 2U);
    EXPECT_EQ(found.located, all - 1);
    EXPECT_EQ(found.noStrike, 1U);
    EXPECT_EQ(found.errors.fixes, all);
    // The errors are 0, 2, 3, 4 ... km by another geodesic, and one of 3000.
    EXPECT_NEAR(found.errors.median, static_cast<double>(all - 1) * 0.5 + 1, 0.001);
    EXPECT_NEAR(found.errors.most, static_cast<double>(all - 1) * 0.9 + 1, 0.001);
    ASSERT_EQ(found.locatedWith.size(), 2U);
    EXPECT_NEAR(found.locatedWith[1].errors.median, 3000, 0.001);
    const std::string text = JudgementText(found);
    EXPECT_NE(text.find("fixes of no strike 1\n"), std::string::npos) << text;
    EXPECT_NE(text.find("  of 1 fixes with C                 median 3000.0 km, 90 % within 3000.0 km\n"),
              std::string::npos)
        << text;
}

TEST(Judge, SaysThatALogFitsNoStrikes) {
    const Night night;
    Evidence reports = night.Reports();
    for (std::size_t i = 0; i < reports.heard[0].log.size(); ++i)
        reports.heard[0].log[i].sample = static_cast<double>(i % 2 == 0 ? i * i * 9173 : i * 77777);
    const Judgement found = Judge(night.scenario, reports);
    EXPECT_LT(found.located, 8U) << "by chance at most";
    reports.heard[0].log.resize(2);
    EXPECT_NE(JudgementText(Judge(night.scenario, reports)).find("its strike log fits no strikes"),
              std::string::npos);
    reports.heard[0].log.clear();
    EXPECT_EQ(JudgementText(Judge(night.scenario, reports)).find("fits no strikes"), std::string::npos);
}

TEST(StationReport, ReadsTheLinesOfAStationAndRefusesOthers) {
    const auto noon = [](UtcTime local) { return local - 7200 * Second; };
    const UtcTime written = ParseUtc("2026-11-21T04:30:12Z").value();
    const auto pairs = ReadCorrelationLog(
        {"2026-11-21 06:30:12, 123.4, 080.0, 043.4, -12.5, -12.25, 0.31, 678901, 678000.5, \n", "corr"},
        noon);
    ASSERT_EQ(pairs.size(), 1U);
    EXPECT_EQ(pairs[0].written, written);
    EXPECT_EQ(pairs[0].sample, 678901);
    EXPECT_EQ(pairs[0].remoteSample, 678000.5);
    const auto fixes = ReadFixes(
        {"Veltrix V0.1.0, folder x\nfix 2026/11/21 06:30:12, 48.20000, -009.50000, 678901, New York\n"
         "2026/11/21 06:30:12,123.4,0000678901,-045.3,000000042\n",
         "out"},
        noon);
    ASSERT_EQ(fixes.size(), 1U);
    EXPECT_EQ(fixes[0].written, written);
    EXPECT_EQ(fixes[0].latitude, 48.2);
    EXPECT_EQ(fixes[0].longitude, -9.5);
    EXPECT_EQ(fixes[0].sample, 678901);
    EXPECT_EQ(fixes[0].remote, "New York");

    const std::pair<const char*, const char*> table[] = {
        {"\nnoon,1,2,3,4", "log:2: 'noon' is no date and time"},
        {"2026/11/21 06:30:12,123.4", "log:1: is too short"},
        {"2026/11/21 06:30:12,123.4,12x,1,1", "log:1: '12x' is no number"},
    };
    for (const auto& [text, message] : table) try {
            ReadStrikeLog({text, "log"}, noon);
            ADD_FAILURE() << "accepted in spite of " << message;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.Description(), message);
        }
}

/// The real detector on a real rendering, through the files, in a place two hours east of Greenwich.
TEST(StormProgram, JudgesWhatTheDetectorHears) {
    const ScratchFolder folder;
    const auto run = [&folder](const std::string& name, const std::vector<std::string>& arguments) {
        RunningProgram program(name, arguments, folder.Text(), {"TZ=XXX-2"});
        EXPECT_EQ(program.Wait(), 0) << program.Errors();
        return program.Output();
    };
    const std::vector<std::string> span = {"--from", "2024-02-03T04:00:00Z", "--seconds", "60"};
    std::vector<std::string> render = {"demo", "--station", "Bravo", "--out", "b.wav"};
    render.insert(render.end(), span.begin(), span.end());
    run("veltrix-storm", render);
    folder.Put("b.csv", run("veltrix-replay", {"--start", "2024/02/03 06:00:00", "b.wav"}));
    std::vector<std::string> judge = {"judge", "demo", "--log", "bravo=b.csv"};
    judge.insert(judge.end(), span.begin(), span.end());
    const std::string text = run("veltrix-storm", judge);
    std::istringstream words(text.substr(text.find("detected by Bravo") + 17));
    double strikes = 0, share = 0;
    words >> strikes >> share;
    EXPECT_GT(strikes, 60) << text;
    EXPECT_GE(share, 94) << text;
}

}  // namespace
}  // namespace veltrix
