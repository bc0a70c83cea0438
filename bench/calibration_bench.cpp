// What a change of calibration costs: the sectors of the map, the dots made anew and the focus, each beside
// its plain way; and one publication.

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <algorithm>
#include <chrono>
#include <random>
#include <string>
#include <vector>

#include "bench/plain_focus.h"
#include "bench/plain_sectors.h"
#include "display/captions.h"
#include "location/map_sector.h"
#include "location/replot.h"
#include "output/publishing.h"
#include "platform/qt/desk_files.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_glyphs.h"
#include "support/plain_glyphs.h"
#include "support/recording_errors.h"
#include "support/scratch_folder.h"
#include "support/test_platform.h"

namespace {

using namespace veltrix;

constexpr int View = 557;

/// How often blocks are drained during a walk, and the longest time between two drains.
class Drains {
  public:
    void Start() {
        count_ = 0;
        last_ = Now();
    }
    void Drain() {
        const double now = Now();
        if (count_++ > 0) longest_ = std::max(longest_, now - last_);
        last_ = now;
    }
    void Finish() { longest_ = std::max(longest_, Now() - last_); }
    void Tell(benchmark::State& state) const {
        state.counters["drains"] = count_;
        state.counters["longest_pause_ms"] = longest_;
    }

  private:
    static double Now() {
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch())
            .count();
    }
    int count_ = 0;
    double last_ = 0;
    double longest_ = 0;
};

// ---- The sectors. The argument is the number of stations.

constexpr MapPoint Home{278.31, 278.77};

std::vector<MapPoint> StationsOnMap(std::int64_t count) {
    std::mt19937 random(1);
    std::vector<MapPoint> stations;
    for (std::int64_t i = 0; i < count; ++i)
        stations.push_back({std::uniform_real_distribution<>(-50, View + 50)(random),
                            std::uniform_real_distribution<>(-50, View + 50)(random)});
    return stations;
}

void SectorsPlain(benchmark::State& state) {
    const std::vector<MapPoint> stations = StationsOnMap(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(PlainSectors(View, View, Home, stations));
}
BENCHMARK(SectorsPlain)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

void SectorsOf(benchmark::State& state, const std::vector<MapPoint>& stations) {
    MapSector sectors(View, View);
    Drains drains;
    for (auto _ : state) {
        drains.Start();
        sectors.Find(Home, stations, [&] { drains.Drain(); });
        drains.Finish();
    }
    drains.Tell(state);
    const std::vector<std::uint8_t> plain = PlainSectors(View, View, Home, stations);
    int wrong = 0;
    for (int x = 0; x < View; ++x)
        for (int y = 0; y < View; ++y)
            wrong += sectors.Winner(x, y) != plain[static_cast<std::size_t>(x * View + y)];
    state.counters["wrong_pixels"] = wrong;
}

void SectorsFind(benchmark::State& state) {
    SectorsOf(state, StationsOnMap(state.range(0)));
}
BENCHMARK(SectorsFind)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

/// Fifty stations, each with another one in the same town, where bounds alone hardly tell one from the other.
void SectorsFindInPairs(benchmark::State& state) {
    std::vector<MapPoint> stations = StationsOnMap(50);
    for (std::size_t i = 0; i < 50; ++i)
        stations.push_back(
            {stations[i].dX + 1 / static_cast<double>(state.range(0)), stations[i].dY + 0.001});
    SectorsOf(state, stations);
}
BENCHMARK(SectorsFindInPairs)->Arg(10)->Arg(1000)->Unit(benchmark::kMillisecond);

void SectorsTint(benchmark::State& state) {
    PlainGlyphs glyphs;
    Surface picture(View, View, glyphs, {0, 0, View, View});
    MapSector sectors(View, View);
    sectors.Find(Home, StationsOnMap(100), [] {});
    for (auto _ : state) sectors.Tint(picture);
}
BENCHMARK(SectorsTint)->Unit(benchmark::kMillisecond);

// ---- The focus on a full ring. The argument tells how far fixes lie about, in pixels.

std::vector<MapPoint> FixesWithin(double pixels) {
    std::mt19937 random(2);
    std::vector<MapPoint> fixes(4096);
    for (MapPoint& fix : fixes)
        fix = {std::uniform_real_distribution<>(400 - pixels, 400 + pixels)(random),
               std::uniform_real_distribution<>(150 - pixels, 150 + pixels)(random)};
    return fixes;
}

template <class Focus>
void FocusOn(benchmark::State& state) {
    const std::vector<MapPoint> fixes = FixesWithin(static_cast<double>(state.range(0)));
    Focus focus;
    std::size_t i = 0;
    const auto next = [&] {
        const MapPoint& fix = fixes[i++ % fixes.size()];
        return focus.GetFocus(Home.dX, Home.dY, 330, 190, fix, 1, 45000);
    };
    for (int k = 0; k < 500; ++k) next();
    for (auto _ : state) benchmark::DoNotOptimize(next());
}
BENCHMARK(FocusOn<PlainFocus>)->Name("FocusPlain")->Arg(1)->Arg(20)->Arg(140);
BENCHMARK(FocusOn<Class2DFocus>)->Name("FocusGetFocus")->Arg(1)->Arg(20)->Arg(140);

// ---- The dots made anew from 2000 pairs of bearings, on the computer's own clock.

/// A map whose ring is full of fixes with ten stations that scatter about `spread` degrees.
struct MapOf2000Fixes {
    RecordingErrors errors;
    QtClock clock;
    ManualClock manual;
    MemoryFiles files{manual};
    PlainGlyphs glyphs;
    PreciseNow preciseNow{clock};
    Mappers mappers{{clock, preciseNow, files, errors}};
    RecentData recent;
    LightningDots dots{clock};
    Surface picture{View, View, glyphs, {0, 0, View, View}};
    FixRules rules;
    Drains drains;

    explicit MapOf2000Fixes(double spread) {
        rules.home = {9.0, 48.2};
        rules.bFocus = true;
        rules.Age = 30;
        mappers.HomeX = Home.dX;
        mappers.HomeY = Home.dY;
        std::mt19937 random(3);
        for (std::int16_t row = 1; row <= 10; ++row) {
            ClassMapper& peer = mappers[row];
            peer.Longitude = 2 + row;
            peer.Latitude = 46 + row % 7;
            const MapPoint place = CalcMapXY(mappers.Local().MapLongitude, mappers.Local().MapLatitude,
                                             mappers.Local().MapRadius, peer.Longitude, peer.Latitude);
            peer.RemoteX = place.dX;
            peer.RemoteY = place.dY;
        }
        std::uniform_real_distribution<> scatter(-spread, spread);
        for (int i = 0; i < RecentData::Length; ++i) {
            const auto row = static_cast<std::int16_t>(1 + i % 10);
            const GeoPoint strike{13 + scatter(random), 52 + scatter(random)};
            const auto bearing = [&](double latitude, double longitude) {
                const double angle = CalcBearings(latitude, longitude, strike.dLat, strike.dLon).dBearing1;
                return angle < 0 ? angle + 180 : angle;
            };
            recent.Add({true, bearing(rules.home.HomeLatitude, rules.home.HomeLongitude), row,
                        bearing(mappers[row].Latitude, mappers[row].Longitude),
                        clock.Now() - (RecentData::Length - i) * 0.5 / 86400});
        }
    }

    void Replot() {
        ReplotRecentData({mappers, recent, dots, clock, [](bool) {}, [this] { drains.Drain(); }}, picture,
                         rules);
    }
};

/// The argument is the scatter of the strikes in tenths of a degree.
void ReplotOf2000Fixes(benchmark::State& state) {
    MapOf2000Fixes map(static_cast<double>(state.range(0)) / 10);
    for (auto _ : state) {
        map.drains.Start();
        map.Replot();
        map.drains.Finish();
    }
    map.drains.Tell(state);
}
BENCHMARK(ReplotOf2000Fixes)->Arg(1)->Arg(20)->Arg(60)->Unit(benchmark::kMillisecond);

/// What the focus of the same costs in the plain way.
void FocusOf2000FixesPlain(benchmark::State& state) {
    const std::vector<MapPoint> fixes = FixesWithin(static_cast<double>(state.range(0)));
    for (auto _ : state) {
        PlainFocus focus;
        for (std::size_t i = 0; i < RecentData::Length; ++i)
            benchmark::DoNotOptimize(focus.GetFocus(Home.dX, Home.dY, 330, 190, fixes[i], 3, 45000));
    }
}
BENCHMARK(FocusOf2000FixesPlain)->Arg(2)->Arg(140)->Unit(benchmark::kMillisecond);

// ---- A publication: captions drawn with the real font, four bitmaps written into a real folder.

void Publication(benchmark::State& state) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int count = 1;
    char name[] = "bench";
    char* arguments[] = {name, nullptr};
    const QGuiApplication application(count, arguments);
    const ScratchFolder folder;
    DeskFiles files(folder.Text());
    QtGlyphs glyphs;
    QtClock clock;
    TestPlatform computer;
    Platform platform{clock,
                      computer.loop,
                      files,
                      computer.processes,
                      computer.store,
                      computer.messageBox,
                      computer.pictures,
                      glyphs,
                      computer.platform.sockets,
                      computer.clipboard,
                      computer.computer};
    const SurfaceScale pixels{0, 0, View, View};
    Surface Picture1(View, View, glyphs, pixels);
    Surface Picture4 = Picture1, Picture8 = Picture1;
    Surface Picture5(View, View, glyphs, {0, 0, 24, 180});
    Surface PicSync(196, 99, glyphs, {0, 0, 196, 99});
    const auto facts = [&] { return CaptionFacts{clock.Now(), "1.2.3", "192.168.100.100"}; };
    Publishing publishing({platform, Picture1, Picture4, Picture5, [&]() -> Surface& { return PicSync; },
                           [&] { DrawCaption(Picture1, facts()); },
                           [&] {
                               DrawMapCaption(Picture4, Picture8, facts(), {30, "Storm tonight"});
                           },
                           [&] { DrawDateCaption(Picture5, clock.Now()); }, [] { return std::string(); }});
    for (auto _ : state) publishing.cmdTestFtp_Click();
    state.counters["bytes"] = static_cast<double>(folder.Content("picture4.bmp").size());
}
BENCHMARK(Publication)->Unit(benchmark::kMillisecond);

}  // namespace
