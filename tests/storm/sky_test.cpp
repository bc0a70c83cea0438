// Strikes, their way to a station and what its sound card hears of them.

#include <gtest/gtest.h>

#include <GeographicLib/GeodesicExact.hpp>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "storm/propagation.h"
#include "storm/renderer.h"

namespace veltrix {
namespace {

constexpr UtcTime Second = NanosecondsPerSecond;

/// One cell, 300 km south-west of a station without noise.
Scenario QuietScenario() {
    return ParseScenario(
        "[storm]\nseed=7\nstart=2024-05-01T00:00:00Z\n"
        "[cell C]\nlatitude=48\nlongitude=6\nradius=500\nrate=120\nstrength=10000\nspeed=40\ndirection=45\n"
        "[station A]\nlatitude=50\nlongitude=9\nnoise=0\nhum=0\n",
        "test");
}

std::vector<std::int16_t> Rendered(Renderer&& renderer, std::size_t frames) {
    std::vector<std::int16_t> samples(2 * frames);
    renderer.Render(samples);
    return samples;
}

TEST(Strikes, ComeLikeChanceEventsFromACellThatDriftsForMonths) {
    const Scenario scenario = QuietScenario();
    const StormCell& cell = scenario.cells.front();
    const StrikeGenerator generator(scenario);
    double farthest = 0, sum = 0, squares = 0, minutes = 0;
    for (int hour = 0; hour < 24 * 180; hour += 7, ++minutes) {
        const UtcTime from = scenario.start + hour * 3600 * Second;
        const std::vector<Strike> strikes = generator.Between(from, from + 60 * Second);
        sum += static_cast<double>(strikes.size());
        squares += std::pow(strikes.size(), 2);
        for (const Strike& strike : strikes) {
            double metres = 0;
            GeographicLib::GeodesicExact::WGS84().Inverse(cell.latitude, cell.longitude, strike.latitude,
                                                          strike.longitude, metres);
            farthest = std::max(farthest, metres / 1000);
        }
    }
    const double mean = sum / minutes;
    EXPECT_NEAR(mean, 120, 4 * std::sqrt(120 / minutes));
    EXPECT_NEAR((squares / minutes - mean * mean) / mean, 1, 0.25);  // a Poisson count's variance is its mean
    EXPECT_LT(farthest, cell.radius + cell.speed * cell.period);
    EXPECT_GT(farthest, cell.radius + cell.speed * (cell.period - 2));
    EXPECT_TRUE(generator.Between(scenario.start - 3600 * Second, scenario.start).empty());
}

TEST(Propagation, AgreesWithAnIndependentGeodesic) {
    const Propagation propagation;
    StormStation station = QuietScenario().stations.front();
    for (double longitude = -171; longitude <= 180; longitude += 17)
        for (double latitude = -88; latitude <= 89; latitude += 11) {
            station.bearingError = longitude;
            const Strike strike{0, latitude, longitude, 0, 100, 1};
            const Arrival arrival = propagation.At(station, strike);
            double metres = 0, here = 0, there = 0;
            GeographicLib::GeodesicExact::WGS84().Inverse(station.latitude, station.longitude, latitude,
                                                          longitude, metres, here, there);
            EXPECT_NEAR(arrival.distance, metres / 1000, 1e-6);
            EXPECT_NEAR(static_cast<double>(arrival.time), metres / 0.299792458, 1);
            EXPECT_NEAR(std::remainder(arrival.antennaBearing - here - station.bearingError, 360), 0, 1e-9);
            EXPECT_TRUE(arrival.antennaBearing >= 0 && arrival.antennaBearing < 360);
        }
    EXPECT_DOUBLE_EQ(Attenuation(0), Attenuation(10));
}

TEST(Rendering, IsTheSameFromEveryStartAndInEveryPiece) {
    const Scenario scenario = LoadScenario("demo");
    const UtcTime start = scenario.start + 5000 * Second + 123'456'789;
    const std::vector<std::int16_t> expected = Rendered(Renderer(scenario, 1, start), 65535);
    Renderer pieces(scenario, 1, start);
    std::vector<std::int16_t> joined(expected.size());
    for (std::size_t at = 0, length = 1; at < 65535; at += length, length *= 2)
        pieces.Render(std::span(joined).subspan(2 * at, 2 * length));
    EXPECT_EQ(joined, expected);
    // A recorder that is started in the middle hears the rest, to the sample.
    const SampleGrid& grid = pieces.Grid();
    Renderer late(scenario, 1, grid.TimeOf(grid.FrameFrom(start) + 33333));
    late.Render(std::span(joined).subspan(2 * 33333));
    EXPECT_EQ(joined, expected);
}

TEST(Rendering, NoiseAndHumHaveTheirStrengthAndLoudPulsesSaturate) {
    Scenario scenario = QuietScenario();
    StormStation& station = scenario.stations[0];
    scenario.cells[0].rate = 0;
    const auto heard = [&scenario] { return Rendered(Renderer(scenario, 0, scenario.start), 100000); };
    station.noise = 70;
    double power = 0, both = 0;
    const std::vector<std::int16_t> noise = heard();
    for (std::size_t i = 0; i < noise.size(); i += 2) {
        power += noise[i] * noise[i];
        both += noise[i] * noise[i + 1];
    }
    EXPECT_NEAR(std::sqrt(power / 100000), 70, 1);
    EXPECT_NEAR(both / power, 0, 0.02) << "of its own in each channel";
    station.noise = 0;
    station.hum = 500;
    const std::vector<std::int16_t> hum = heard();
    EXPECT_EQ(std::ranges::max(hum), 500);
    EXPECT_EQ(hum[2 * 22057], hum[2 * 7 + 1]);  // 50 whole periods a second, alike in both channels

    scenario.cells[0].rate = 600;
    scenario.cells[0].strength = 1e6;
    const auto [least, greatest] = std::ranges::minmax(heard());
    EXPECT_TRUE(least == -32768 && greatest == 32767) << least << " to " << greatest;
}

/// Ten years on, by a clock that is wrong. The bearing is found by a fit that shares nothing with the
/// station's: the main axis of a pulse's points, which is the direction in which their spread is greatest.
TEST(Rendering, PulsesCarryTheirTimeBearingAndPeak) {
    Scenario scenario = QuietScenario();
    scenario.stations[0].clockError = 500.25;
    scenario.stations[0].bearingError = 135;
    const UtcTime start = scenario.start + 315'576'000 * Second;
    Renderer renderer(scenario, 0, start);
    std::vector<std::int16_t> samples(2 * 121 * 22050);
    renderer.Render(samples);
    // A frame's value behind the mean of eight samples with alternating signs.
    const auto filtered = [&samples](std::size_t frame, std::size_t channel) {
        double sum = 0;
        for (std::size_t k = 0; k < 8; ++k)
            sum += (k % 2 == 0 ? 0.125 : -0.125) * samples[2 * (frame - k) + channel];
        return sum;
    };
    std::vector<Arrival> arrivals;
    const Propagation propagation;
    for (const Strike& strike : StrikeGenerator(scenario).Between(start, start + 120 * Second))
        arrivals.push_back(propagation.At(scenario.stations[0], strike));
    std::ranges::sort(arrivals, {}, &Arrival::time);
    const SampleGrid& grid = renderer.Grid();
    const std::int64_t first = grid.FrameFrom(start);
    EXPECT_NEAR(static_cast<double>(first), 315'576'000.0 * 22050 * 1.00050025, 1);
    int seen = 0;
    for (std::size_t i = 1; i + 1 < arrivals.size(); ++i) {
        const Arrival& arrival = arrivals[i];
        const bool isAlone = arrival.time - arrivals[i - 1].time > 10'000'000 &&
                             arrivals[i + 1].time - arrival.time > 10'000'000;
        if (!isAlone || arrival.peak < 1000 || arrival.peak > 30000) continue;
        ++seen;
        const auto at = static_cast<std::size_t>(grid.FrameFrom(arrival.time) - first);
        // Silence up to the onset, then a quick rise: a fiftieth of the peak within four samples.
        EXPECT_EQ(samples[2 * at - 2], 0);
        const auto [least, greatest] = std::ranges::minmax(std::span(samples).subspan(2 * at, 8));
        EXPECT_GT(greatest - least, arrival.peak / 50);
        double nn = 0, ee = 0, ne = 0, peak = 0;
        for (std::size_t k = at; k < at + 60; ++k) {
            const double north = filtered(k, 0), east = filtered(k, 1);
            nn += north * north;
            ee += east * east;
            ne += north * east;
            peak = std::max(peak, std::hypot(north, east));
        }
        const double bearing = 0.5 * std::atan2(2 * ne, nn - ee) * 180 / std::numbers::pi;
        EXPECT_NEAR(std::remainder(bearing - arrival.antennaBearing, 180), 0, 0.1);
        EXPECT_NEAR(peak / arrival.filteredPeak, 0.925, 0.08);
    }
    EXPECT_GT(seen, 100);
}

}  // namespace
}  // namespace veltrix
