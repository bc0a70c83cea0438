// What a pair of detections costs on the sync display and on the map, each beside its plain way.

#include <benchmark/benchmark.h>

#include <GeographicLib/AzimuthalEquidistant.hpp>
#include <array>
#include <chrono>
#include <cmath>
#include <random>
#include <vector>

#include "bench/plain_map_displays.h"
#include "bench/station_with_peers.h"
#include "display/lightning_dots.h"
#include "location/mod_calc_globe.h"
#include "support/manual_clock.h"
#include "support/plain_glyphs.h"
#include "support/recording_errors.h"

namespace {

using namespace veltrix;

// ---- The sync display.

/// Differences of time in ms as a correlator sees them: one in ten is the true one, the rest lies anywhere.
std::vector<double> Differences() {
    std::mt19937 random(1);
    std::vector<double> differences(4096);
    for (double& d : differences)
        d = random() % 10 == 0 ? 4200 + std::normal_distribution<>(0, 8)(random)
                               : std::uniform_real_distribution<>(-60000, 60000)(random);
    return differences;
}

void PeakByScan(benchmark::State& state) {
    const std::vector<double> differences = Differences();
    PlainHistogram histogram;
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(histogram.Update(differences[i++ % differences.size()], 10, 0));
}
BENCHMARK(PeakByScan);

void HistogramUpdate(benchmark::State& state) {
    const std::vector<double> differences = Differences();
    RecordingErrors errors;
    ClassHistogram histogram(errors);
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(histogram.Update(differences[i++ % differences.size()], 10, 0));
}
BENCHMARK(HistogramUpdate);

struct NoOwner final : HistogramOwner {
    double MedianDifference() override { return 4200; }
};

struct SyncPicture {
    PlainGlyphs glyphs;
    Surface surface{196, 99, glyphs, {0, 0, 196, 99}};
};

/// The ten differences of a detection, then the row.
void RowBinByBin(benchmark::State& state) {
    const std::vector<double> differences = Differences();
    SyncPicture picture;
    PlainHistogram histogram;
    std::size_t i = 0;
    for (auto _ : state) {
        for (int n = 0; n < 10; ++n) histogram.Update(differences[i++ % differences.size()], 10, 0);
        histogram.Display(picture.surface, Rgb(1, 1, 0), 1, false);
    }
}
BENCHMARK(RowBinByBin);

void RowOfDisplaySync(benchmark::State& state) {
    const std::vector<double> differences = Differences();
    SyncPicture picture;
    RecordingErrors errors;
    NoOwner owner;
    ClassHistogram histogram(errors);
    histogram.Parent = &owner;
    std::size_t i = 0;
    for (auto _ : state) {
        for (int n = 0; n < 10; ++n) histogram.Update(differences[i++ % differences.size()], 10, 0);
        histogram.DisplaySync(picture.surface);
    }
}
BENCHMARK(RowOfDisplaySync);

/// The pair of histograms of a fix: the red one, and the green one laid over it.
void RedAndGreenBinByBin(benchmark::State& state) {
    const std::vector<double> differences = Differences();
    SyncPicture picture;
    PlainHistogram coarse, fine;
    std::size_t i = 0;
    for (auto _ : state) {
        const double difference = differences[i++ % differences.size()];
        fine.Update(difference + 1, 0.05, 0.5);
        coarse.Update(difference, 0.05, 0.5);
        coarse.Display(picture.surface, Rgb(1, 0, 0), 32, false);
        fine.Display(picture.surface, Rgb(0, 1, 0), 32, true);
        coarse.rowX = fine.rowX;
    }
}
BENCHMARK(RedAndGreenBinByBin);

void RedAndGreenOfDisplaySync2(benchmark::State& state) {
    const std::vector<double> differences = Differences();
    SyncPicture picture;
    RecordingErrors errors;
    ClassHistogram coarse(errors), fine(errors);
    std::size_t i = 0;
    for (auto _ : state) {
        const double difference = differences[i++ % differences.size()];
        fine.Update(difference + 1, 0.05, 0.5);
        coarse.Update(difference, 0.05, 0.5);
        coarse.DisplaySync2(picture.surface, Red, 32, false);
        fine.DisplaySync2(picture.surface, Rgb(0, 255, 0), 32, true);
        coarse.lRowX = fine.lRowX;
    }
}
BENCHMARK(RedAndGreenOfDisplaySync2);

// ---- The dots of the map. The argument is how many of a hundred dots are young enough to be seen.

constexpr int View = 557;

struct MapOf2000Dots {
    PlainGlyphs glyphs;
    ManualClock clock;
    Surface picture{View, View, glyphs, {0, 0, View, View}};
    Surface clean = picture;
    PlainDots plain;
    LightningDots dots{clock};

    explicit MapOf2000Dots(std::int64_t youngPercent) {
        std::mt19937 random(2);
        const double hundredth = 31 / 1440.0 / static_cast<double>(youngPercent);
        for (int i = 1999; i >= 0; --i) {
            const auto x = static_cast<double>(random() % View), y = static_cast<double>(random() % View);
            const double made = clock.Now() - i / 20.0 * hundredth;
            plain.Add(x, y, made);
            dots.AddpXY2(picture, x, y, White, made);
        }
        dots.DrawAllLightningInPicture4(picture, clean);
        plain.DrawAll(picture, clean, clock.Now(), dots.Age);
    }
};

void MapOfDotsPlain(benchmark::State& state) {
    MapOf2000Dots map(state.range(0));
    for (auto _ : state) map.plain.Draw(map.picture, map.clean, false, map.clock.Now(), map.dots.Age);
}
BENCHMARK(MapOfDotsPlain)->Arg(5)->Arg(100);

void DrawLightningInPicture4(benchmark::State& state) {
    MapOf2000Dots map(state.range(0));
    for (auto _ : state) {
        map.clock.Advance(100);
        map.dots.DrawLightningInPicture4(map.picture, map.clean, false);
    }
}
BENCHMARK(DrawLightningInPicture4)->Arg(5)->Arg(100);

// ---- The map's projection.

/// Places all over a map of 2000 km.
std::vector<GeoPoint> PlacesOnMap() {
    std::mt19937 random(3);
    std::vector<GeoPoint> places(4096);
    for (GeoPoint& place : places)
        place = {std::uniform_real_distribution<>(-16, 24)(random),
                 std::uniform_real_distribution<>(37, 64)(random)};
    return places;
}

constexpr GeoPoint MapCentre{4.43579, 50.93272};

void ProjectionByGeodesics(benchmark::State& state) {
    const std::vector<GeoPoint> places = PlacesOnMap();
    const GeographicLib::AzimuthalEquidistant projection(GeographicLib::Geodesic::WGS84());
    std::size_t i = 0;
    for (auto _ : state) {
        const GeoPoint& place = places[i++ % places.size()];
        double x = 0, y = 0;
        projection.Forward(MapCentre.dLat, MapCentre.dLon, place.dLat, place.dLon, x, y);
        benchmark::DoNotOptimize(x + y);
    }
}
BENCHMARK(ProjectionByGeodesics);

void ProjectionByCalcMapXY(benchmark::State& state) {
    const std::vector<GeoPoint> places = PlacesOnMap();
    std::size_t i = 0;
    for (auto _ : state) {
        const GeoPoint& place = places[i++ % places.size()];
        benchmark::DoNotOptimize(CalcMapXY(MapCentre.dLon, MapCentre.dLat, 2000, place.dLon, place.dLat));
    }
}
BENCHMARK(ProjectionByCalcMapXY);

// ---- A local detection with two peers.

/// A station whose two peers have told of each strike before it hears that itself.
class CorrelatedStation {
  public:
    explicit CorrelatedStation(bool logs) : station_(Sites, logs) {
        station_.form.OnLocated() = [this](const LocatedStrike&) { ++located; };
        for (int i = 0; i < 200; ++i) {
            TellOfStrike();
            Locate();
        }
        located = 0;
    }

    /// Strikes come every 50 ms on average. What the peers say is read, their halves shown.
    void TellOfStrike() {
        const auto wait = std::uniform_int_distribution<>(20, 80)(random_);
        sample_ += 22.05 * wait;
        const GeoPoint strike{std::uniform_real_distribution<>(0, 18)(random_),
                              std::uniform_real_distribution<>(44, 55)(random_)};
        for (std::size_t peer = 0; peer < Sites.size(); ++peer) {
            const Site& site = Sites[peer];
            const double bearing =
                CalcBearings(site.latitude, site.longitude, strike.dLat, strike.dLon).dBearing1;
            const double travel = CalcDistance(site.latitude, site.longitude, strike.dLat, strike.dLon) /
                                  LightKmPerMs * SamplesPerMs;
            const Detection heard{station_.computer.clock.Now(), bearing < 0 ? bearing + 360 : bearing, -40,
                                  std::floor(1e6 * static_cast<double>(peer + 1) + sample_ + travel), 0};
            if (peer == 0)
                local_ = {heard.dDir, heard.dAmp, 2, 40, heard.dTime, 0};
            else
                station_.Tell(peer, heard);
        }
        station_.computer.loop.Run(wait);
    }

    /// What the station does about its own half, from the matching on: both pairs, map, sync displays, polar
    /// display and history.
    void Locate() {
        DetectionConsumers& consumers = station_.form.Consumers();
        SkipFailures failures;
        Located where;
        consumers.stations->MapUpdateAll(local_, false, where, failures);
        consumers.displays->GyrelUpdate(local_.dDir, local_.dAmp, limits_, Yellow);
        consumers.displays->GyrelUpdate(local_.dDir + 180, local_.dAmp, limits_, Yellow);
        consumers.displays->UpdateDisplay(station_.computer.clock.Now(), local_.dDir, local_.dAmp, limits_);
    }

    std::int64_t located = 0;

  private:
    static constexpr double LightKmPerMs = 299.792458;
    static constexpr double SamplesPerMs = 22.05;
    static inline const std::array<Site, 3> Sites{
        {{"Home", 48.2, 9.0}, {"Peer", 50.6, 12.2}, {"Third", 52.0, 5.6}}};

    StationWithPeers station_;
    std::mt19937 random_{4};
    AmplitudeLimits limits_;
    Pulse local_;
    double sample_ = 0;
};

/// The argument tells whether each pair is logged, too; that opens a file and closes it again.
void LocalDetectionWithTwoPeers(benchmark::State& state) {
    CorrelatedStation station(state.range(0) != 0);
    for (auto _ : state) {
        station.TellOfStrike();
        const auto start = std::chrono::steady_clock::now();
        station.Locate();
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    state.counters["located"] =
        benchmark::Counter(static_cast<double>(station.located), benchmark::Counter::kAvgIterations);
}
BENCHMARK(LocalDetectionWithTwoPeers)->Arg(0)->Arg(1)->UseManualTime();

/// The displays of the same in the plainest way, without any of the rest: for each peer ten differences and a
/// row of the sync display, the red and green rows, and a dot on the map.
void DisplaysOfTwoPeersPlain(benchmark::State& state) {
    const std::vector<double> differences = Differences();
    MapOf2000Dots map(100);
    std::array<PlainHistogram, 2> medium, coarse, fine;
    SyncPicture picture;
    std::size_t i = 0;
    for (auto _ : state)
        for (std::size_t peer = 0; peer < 2; ++peer) {
            for (int n = 0; n < 10; ++n) medium[peer].Update(differences[i++ % differences.size()], 10, 0);
            medium[peer].Display(picture.surface, Rgb(1, 1, 0), 1, false);
            fine[peer].Update(differences[i % differences.size()] + 1, 0.05, 0.5);
            coarse[peer].Update(differences[i % differences.size()], 0.05, 0.5);
            coarse[peer].Display(picture.surface, Rgb(1, 0, 0), 32, false);
            fine[peer].Display(picture.surface, Rgb(0, 1, 0), 32, true);
            map.plain.Plot(map.picture, map.clean, static_cast<double>(i % View), 200, true, map.clock.Now(),
                           map.dots.Age);
        }
}
BENCHMARK(DisplaysOfTwoPeersPlain);

}  // namespace
