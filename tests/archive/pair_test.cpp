// Two recordings of a known storm: what is located is held against the truth, by exact geodesics.

#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <random>
#include <set>

#include "archive/pair_analysis.h"
#include "archive/strike_table.h"
#include "storm/renderer.h"
#include "storm/sample_counter.h"
#include "support/memory_files.h"
#include "support/scratch_folder.h"
#include "support/sound_file.h"

namespace veltrix {
namespace {

constexpr int Seconds = 240;
constexpr int GapFrom = 110;  // of the second station's recording, s
constexpr int GapTo = 125;
constexpr int ClockAhead = 41;  // of the second station's computer, s

Samples Rendered(const Scenario& scenario, std::size_t station) {
    Renderer renderer(scenario, station, scenario.start);
    Samples samples(2 * Seconds * 22050UL);
    renderer.Render(samples);
    return samples;
}

Samples Part(const Samples& samples, int from, int to) {
    return {samples.begin() + 2L * 22050 * from, samples.begin() + 2L * 22050 * to};
}

StationRecord RecordOf(const StormStation& station, const ScratchFolder& folder) {
    StationRecord record{station.name, {station.latitude, station.longitude}, 0, 0, {}};
    StationReplay replay({});
    replay.OnPulse = [&](const HeardPulse& heard) { record.pulses.push_back(heard); };
    for (const std::string& name : RecordingsOf({folder.Text()})) replay.Play(name);
    record.start = replay.Sum().start;
    return record;
}

/// Two stations of the built-in storm, 350 km and 50 ppm apart; one of them has a gap, and its computer's
/// clock is 41 s ahead.
struct TwoRecordings {
    Scenario scenario = LoadScenario("demo");
    StationRecord alpha, bravo;

    TwoRecordings() {
        scenario.stations[1].bearingError = 4;
        const ScratchFolder alphaFolder, bravoFolder;
        WriteSound(alphaFolder / "a_20240101_000000.wav", Rendered(scenario, 0));
        const Samples sound = Rendered(scenario, 1);
        WriteSound(bravoFolder / "b_20240101_000041.wav", Part(sound, 0, 60));
        WriteSound(bravoFolder / "b_20240101_000141.wav", Part(sound, 60, GapFrom));
        WriteSound(bravoFolder / "b_20240101_000246.wav", Part(sound, GapTo, Seconds));
        alpha = RecordOf(scenario.stations[0], alphaFolder);
        bravo = RecordOf(scenario.stations[1], bravoFolder);
        bravo.correction = -4;
    }
};

TEST(LocatePairs, LocatesAsManyAndAsWellAsStationsDoFromTheFirstStrikeOn) {
    const TwoRecordings storm;
    ManualClock clock;
    MemoryFiles files(clock);
    const PairFindings found = LocatePairs(storm.alpha, storm.bravo, {}, files);
    ASSERT_EQ(found.offsets.size(), 2U) << "before and after the gap";
    for (const ClockOffset& offset : found.offsets) {
        EXPECT_NEAR(offset.ToFirst(ClockAhead), 0, 0.01);
        EXPECT_NEAR(offset.rate * 1e6, 50, 8);
    }

    const UtcTime start = storm.scenario.start;
    const std::vector<Strike> strikes =
        StrikeGenerator(storm.scenario).Between(start, start + Seconds * NanosecondsPerSecond);
    const ArrivalTimes atAlpha(strikes, storm.scenario.stations[0]);
    const SampleGrid grid(start, storm.scenario.stations[0].clockError);
    const Propagation propagation;
    std::set<std::size_t> located;
    std::vector<double> errors, timeErrors;
    for (const LocatedPair& one : found.strikes) {
        constexpr UtcTime TriggerDelay = 300'000;
        const auto strike = atAlpha.StrikeAt(grid.TimeOf(one.first.frame) - TriggerDelay);
        ASSERT_TRUE(strike);
        located.insert(*strike);
        const Strike& truth = strikes[*strike];
        errors.push_back(GeodesicDistance(one.latitude, one.longitude, truth.latitude, truth.longitude));
        const UtcTime here = propagation.At(storm.scenario.stations[0], truth).time;
        const UtcTime there = propagation.At(storm.scenario.stations[1], truth).time;
        timeErrors.push_back(std::abs(one.deltaT - static_cast<double>(here - there) / 1e6));
    }
    const double inGap = static_cast<double>(GapTo - GapFrom) / Seconds;
    EXPECT_GT(located.size(), 0.88 * (1 - inGap) * static_cast<double>(strikes.size()));
    EXPECT_LT(*located.begin(), 3U);
    std::ranges::sort(errors);
    std::ranges::sort(timeErrors);
    EXPECT_LT(errors[errors.size() / 2], 7) << "km";
    EXPECT_LT(errors[errors.size() * 9 / 10], 40);
    EXPECT_LT(timeErrors[timeErrors.size() / 2], 0.15) << "ms";

    PairRules strict;
    strict.toaFilter = true;
    strict.minStrength = 30;
    const PairFindings fewer = LocatePairs(storm.alpha, storm.bravo, strict, files);
    EXPECT_LT(fewer.strikes.size(), found.strikes.size());
    for (const LocatedPair& one : fewer.strikes) {
        EXPECT_GE(std::min(one.first.pulse.dAmp, one.second.pulse.dAmp), -30);
        EXPECT_LE(std::abs(one.toaError), 0.25);
    }
}

TEST(LocatePairs, FindsNothingInRecordingsOfDifferentTimes) {
    TwoRecordings storm;
    storm.bravo.start += 1.0 / 24;
    ManualClock clock;
    MemoryFiles files(clock);
    const PairFindings found = LocatePairs(storm.alpha, storm.bravo, {}, files);
    EXPECT_TRUE(found.strikes.empty());
    EXPECT_TRUE(found.offsets.empty());
}

TEST(ClockOffset, IsNotMadeUpFromChance) {
    std::mt19937 random(3);
    std::uniform_real_distribution<> any(0, 3600);
    std::vector<double> one(3600), other(3600);
    for (double& time : one) time = any(random);
    for (double& time : other) time = any(random);
    std::ranges::sort(one);
    std::ranges::sort(other);
    EXPECT_FALSE(FindClockOffset(one, other, 120));
    // Every tenth in common is enough, whatever the drift.
    for (std::size_t i = 0; i < other.size(); i += 10) other[i] = one[i] * (1 - 200e-6) - 77.7;
    std::ranges::sort(other);
    const auto offset = FindClockOffset(one, other, 120);
    ASSERT_TRUE(offset);
    for (const double time : {100.0, 3500.0})
        EXPECT_NEAR(offset->ToFirst(time * (1 - 200e-6) - 77.7), time, 0.01);
}

TEST(StrikeTable, SaysTheSameInBothForms) {
    LocatedPair strike;
    strike.first.date = DateTimeOf({2026, 6, 1, 23, 59, 59}) + 0.9994 / 86400;
    strike.first.pulse.dLocalSample = 2099999999;
    strike.first.pulse.dAmp = -45.26;
    strike.latitude = -33.123456;
    strike.longitude = -70.5;
    strike.firstBearing = 359.96;
    strike.deltaT = -1.2345;
    const TableStations stations{"At \"home\", attic", "B", true};
    EXPECT_EQ(FixLineOf(strike, stations), "fix 2026/06/01 23:59:59, -33.12346, -070.50000, 2099999999, B");
    const std::string csv = StrikeCsv({strike}, stations);
    EXPECT_EQ(
        csv,
        "time,latitude,longitude,\"At \"\"home\"\", attic:bearing\",\"At \"\"home\"\", attic:distance\","
        "\"At \"\"home\"\", attic:amplitude\",\"At \"\"home\"\", attic:sample\",B:bearing,B:distance,"
        "B:amplitude,B:sample,delta_t,toa_error\n"
        "2026-06-01T23:59:59.999Z,-33.12346,-70.50000,360.0,0.0,-45.3,2099999999,0.0,0.0,0.0,0,-1.235,"
        "0.000\n");
    const auto json = nlohmann::json::parse(StrikeGeoJson({strike, strike}, stations));
    EXPECT_EQ(json.at("type"), "FeatureCollection");
    ASSERT_EQ(json.at("features").size(), 2U);
    const auto& feature = json.at("features")[1];
    EXPECT_EQ(feature.at("geometry").at("coordinates"), nlohmann::json({-70.5, -33.12346}));
    EXPECT_EQ(feature.at("properties").at("time"), "2026-06-01T23:59:59.999Z");
    EXPECT_EQ(feature.at("properties").at("At \"home\", attic:sample"), 2099999999);
    EXPECT_TRUE(nlohmann::json::parse(StrikeGeoJson({}, stations)).at("features").empty());
}

}  // namespace
}  // namespace veltrix
