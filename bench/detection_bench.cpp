// The sample loop against a plain scalar loop of the same arithmetic, frame by frame.

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "bench/plain_detector.h"
#include "detection/detector.h"
#include "station/form_displays.h"
#include "support/plain_glyphs.h"
#include "support/recording_errors.h"

namespace {

using namespace veltrix;

class Nobody final : public PulseReceiver {
  public:
    void OnTrigger() override {}
    void OnPulseEnd() override {}
    void ShowClipping(bool) override {}
    bool Deliver(const Pulse&, FailureHandler&) override { return true; }
};

/// The two scopes of a form, drawn as on a screen.
struct Scopes {
    PlainGlyphs glyphs;
    RecordingErrors errors;
    FormControls controls{glyphs};
    FormDisplays feed{controls, errors};
};

/// What is listened to, and how.
struct Listening {
    const char* name;
    int strikes = 0;     ///< in the block of 1.5 s
    double noise = 30;   ///< rms of each channel
    bool filter = true;  ///< takes noise down by the root of 8
    bool scopes = true;
    AntennaOptions antenna = {};
};

constexpr Listening Cases[] = {
    {.name = "quiet"},
    {.name = "three_strikes_a_second", .strikes = 5},
    {.name = "ten_strikes_a_second", .strikes = 15},
    {.name = "twenty_strikes_a_second", .strikes = 30},
    {.name = "no_scopes_quiet", .scopes = false},
    {.name = "no_scopes_ten_strikes_a_second", .strikes = 15, .scopes = false},
    {.name = "no_scopes_twenty_strikes_a_second", .strikes = 30, .scopes = false},
    {.name = "no_filter_quiet", .filter = false},
    {.name = "no_filter_ten_strikes_a_second", .strikes = 15, .filter = false},
    {.name = "antenna_turned_quiet", .antenna = {true, true, false}},
    {.name = "antenna_turned_ten_strikes_a_second", .strikes = 15, .antenna = {true, true, false}},
    // The threshold of 324 lies at four, three and two standard deviations of one channel.
    {.name = "noise_below_threshold", .noise = 229},
    {.name = "noise_at_threshold", .noise = 305},
    {.name = "noise_above_threshold", .noise = 458},
    {.name = "no_scopes_noise_at_threshold", .noise = 305, .scopes = false},
    {.name = "no_scopes_noise_above_threshold", .noise = 458, .scopes = false},
};

/// A block of noise with short bursts in it.
std::vector<std::int16_t> Sky(const Listening& what) {
    constexpr std::size_t Frames = 32768;
    std::mt19937 random(3);
    std::normal_distribution<double> noise(0, what.noise);
    std::vector<std::int16_t> samples(2 * Frames);
    for (std::int16_t& s : samples) s = static_cast<std::int16_t>(noise(random));
    const auto strikes = static_cast<std::size_t>(what.strikes);
    for (std::size_t i = 0; i < strikes; ++i) {
        const std::size_t at = Frames / strikes * i + 77;
        for (std::size_t k = 0; k < 60; ++k) {
            const double x =
                5000 * std::exp(-static_cast<double>(k) / 15) * std::cos(2.9 * static_cast<double>(k));
            samples[2 * (at + k)] = static_cast<std::int16_t>(samples[2 * (at + k)] + x);
        }
    }
    return samples;
}

void CountFrames(benchmark::State& state, std::size_t samples) {
    const auto frames = static_cast<std::int64_t>(samples / 2);
    state.SetItemsProcessed(state.iterations() * frames);
    state.counters["times_real_time"] = benchmark::Counter(
        static_cast<double>(state.iterations() * frames) / SampleRate, benchmark::Counter::kIsRate);
}

void PlainLoop(benchmark::State& state, const Listening& what) {
    const std::vector<std::int16_t> sky = Sky(what);
    Scopes scopes;
    PlainDetector detector({.invert = what.antenna.bInvertNS,
                            .add90 = what.antenna.bAdd90,
                            .sub90 = what.antenna.bSub90,
                            .filter = what.filter});
    if (what.scopes) detector.scopes = &scopes.feed;
    for (auto _ : state) {
        detector.Process(sky);
        detector.pulses.clear();
    }
    CountFrames(state, sky.size());
}

void SampleLoop(benchmark::State& state, const Listening& what) {
    const std::vector<std::int16_t> sky = Sky(what);
    NoiseControl noise;
    Nobody nobody;
    SkipFailures failures;
    Scopes scopes;
    Detector detector(noise, nobody, [] { return 0; });
    detector.antenna = what.antenna;
    detector.bHighPass = what.filter;
    if (what.scopes) detector.SetScopes(&scopes.feed);
    for (auto _ : state) benchmark::DoNotOptimize(detector.Process(sky, failures));
    CountFrames(state, sky.size());
}

const bool Registered = [] {
    for (const Listening& what : Cases) {
        benchmark::RegisterBenchmark((std::string("PlainLoop/") + what.name).c_str(), PlainLoop, what);
        benchmark::RegisterBenchmark((std::string("SampleLoop/") + what.name).c_str(), SampleLoop, what);
    }
    return true;
}();

/// One reading of the noise with all that follows from it; comes with one quiet frame in a thousand.
void NoiseUpdate(benchmark::State& state) {
    NoiseControl noise;
    noise.StartNoiseLevel();
    SkipFailures failures;
    double envelope = 20;
    for (auto _ : state) {
        envelope = envelope > 60 ? 20.5 : envelope + 7.1;
        benchmark::DoNotOptimize(noise.Update(envelope, failures));
    }
}
BENCHMARK(NoiseUpdate);

}  // namespace
