// An hour of a severe storm through a whole station: 20 strikes a second, two peers that hear them all, every
// display, filter and log on. Beside it the same sound through the detector alone.
//
// The sound is rendered minute by minute, and the recorder's file laid there, outside the measured time. What
// the peers send is made from the truth: the strike's bearing with a degree of noise, and its arrival by
// their own sample clocks. The event loop and the network in memory are part of what is measured.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <map>
#include <vector>

#include "bench/ear.h"
#include "bench/station_with_peers.h"
#include "storm/hash_random.h"
#include "storm/renderer.h"

using namespace veltrix;

namespace {

constexpr int Minutes = 60;
constexpr int BlockMilliseconds = 100;
constexpr int BlockFrames = 2205;
constexpr std::int64_t BlocksPerMinute = 600;
constexpr UtcTime LineTravel = 100'000'000;  // from a peer's block to the station
constexpr double BearingNoise = 1;           // degrees

/// Ten storms with two strikes a second each; the whole sky lies within reach of all stations.
Scenario SevereStorm() {
    constexpr double Degrees[][2] = {{50, 9}, {47, 11}, {49, 14}, {46, 7},  {52, 9},
                                     {48, 5}, {45, 12}, {50, 16}, {53, 13}, {51, 3}};
    Scenario storm;
    storm.name = "severe storm";
    storm.seed = 72;
    storm.start = *ParseUtc("2024-06-15T12:00:00Z");
    for (const auto& [latitude, longitude] : Degrees)
        storm.cells.push_back({"Cell", latitude, longitude, 60, 120, 15000, 5, 30, 60, 1000});
    storm.stations = {{"Home", 48.2, 9.0, 0, 35, 800, 50, 35},
                      {"Peer", 50.6, 12.2, 0, 30, 400, 50, -15},
                      {"Third", 52.0, 5.6, 0, 30, 600, 50, 85}};
    return storm;
}

/// The time that pieces of work take.
class Stopwatch {
  public:
    template <typename Work>
    void Measure(Work&& work) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        pieces_.push_back(took.count());
    }
    double Sum() const {
        double sum = 0;
        for (const double piece : pieces_) sum += piece;
        return sum;
    }
    /// The time that this share of the pieces stays within.
    double Within(double share) const {
        std::vector<double> sorted = pieces_;
        std::ranges::sort(sorted);
        return sorted[static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1))];
    }

  private:
    std::vector<double> pieces_;
};

class StormHour {
  public:
    void Play() {
        for (int minute = 0; minute < Minutes; ++minute) {
            RenderMinute();
            for (std::int64_t block = 0; block < BlocksPerMinute; ++block)
                PlayBlock(minute * BlocksPerMinute + block);
        }
    }

    void Print() {
        constexpr double Hour = 3600;
        const auto shown = [this](const char* control) {
            return dynamic_cast<Label&>(home_.form.Controls().Require(control)).Caption();
        };
        std::printf(
            "strikes %zu, detections %zu, lines from peers %zu, located %zu, dots with the first peer %s\n",
            strikes_, ear_.caught.size(), lines_, located_, shown("lblStrikeCount4").c_str());
        std::printf("| | s for the hour | times real time | median tick ms | 99.9 %% ms | longest ms |\n");
        std::printf("|---|---:|---:|---:|---:|---:|\n");
        for (const auto& [name, watch] :
             {std::pair("whole station", &station_), std::pair("detector alone", &detector_)})
            std::printf("| %s | %.2f | %.0f | %.2f | %.2f | %.2f |\n", name, watch->Sum(),
                        Hour / watch->Sum(), 1e3 * watch->Within(0.5), 1e3 * watch->Within(0.999),
                        1e3 * watch->Within(1));
    }

    bool IsConnected() const { return home_.IsConnected(); }
    void CountLocated() {
        home_.form.OnLocated() = [this](const LocatedStrike&) { ++located_; };
    }

  private:
    /// A line on its way.
    struct Line {
        std::size_t peer = 0;
        Detection detection;
    };

    void RenderMinute() {
        const UtcTime from = renderer_.Time();
        samples_.resize(static_cast<std::size_t>(2 * BlockFrames * BlocksPerMinute));
        renderer_.Render(samples_);
        for (const Strike& strike : generator_.Between(from, renderer_.Time())) {
            ++strikes_;
            for (std::size_t peer = 1; peer < storm_.stations.size(); ++peer) MakeLine(strike, peer);
        }
    }

    void MakeLine(const Strike& strike, std::size_t peer) {
        constexpr double Decibels = -40;
        const Arrival arrival = propagation_.At(storm_.stations[peer], strike);
        const SampleGrid grid(storm_.start, storm_.stations[peer].clockError);
        const auto hash = MixedKey(storm_.seed, peer, strike.time);
        Detection detection;
        detection.dDir = std::fmod(arrival.antennaBearing + BearingNoise * NormalOf(hash).first + 360, 360);
        detection.dAmp = Decibels;
        detection.dTime = 1e6 * static_cast<double>(peer) + static_cast<double>(grid.FrameFrom(arrival.time));
        travelling_.emplace(arrival.time + LineTravel, Line{peer, detection});
    }

    void PlayBlock(std::int64_t block) {
        const auto offset = static_cast<std::size_t>(block % BlocksPerMinute * 2 * BlockFrames);
        const auto samples = std::span(samples_).subspan(offset, 2 * BlockFrames);
        const auto* const bytes = reinterpret_cast<const char*>(samples.data());
        home_.folder.Put("audio.dat", std::string_view(bytes, samples.size_bytes()));
        const UtcTime now = storm_.start + (block + 1) * BlockMilliseconds * 1'000'000;
        while (!travelling_.empty() && travelling_.begin()->first <= now) {
            Line& line = travelling_.begin()->second;
            line.detection.dDate = home_.computer.clock.Now();
            home_.Tell(line.peer, line.detection);
            travelling_.erase(travelling_.begin());
            ++lines_;
        }
        station_.Measure([this] { home_.computer.loop.Run(BlockMilliseconds); });
        detector_.Measure([&] { ear_.Listen(samples, block); });
    }

    const Scenario storm_ = SevereStorm();
    Renderer renderer_{storm_, 0, storm_.start};
    StrikeGenerator generator_{storm_};
    Propagation propagation_;
    std::vector<std::int16_t> samples_;
    std::multimap<UtcTime, Line> travelling_;  // by the time of their arrival
    StationWithPeers home_{{{{"Home", 48.2, 9.0}, {"Peer", 50.6, 12.2}, {"Third", 52.0, 5.6}}}, true};
    Ear ear_{0};
    Stopwatch station_, detector_;
    std::size_t strikes_ = 0;
    std::size_t lines_ = 0;
    std::size_t located_ = 0;
};

}  // namespace

int main() {
    StormHour hour;
    if (!hour.IsConnected()) {
        std::fprintf(stderr, "the peers are not connected\n");
        return 1;
    }
    hour.CountLocated();
    hour.Play();
    hour.Print();
    return 0;
}
