// The sample loop against a plain scalar loop of the same arithmetic, frame by frame.

#include <benchmark/benchmark.h>

#include <random>
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

/// A block of noise with `strikes` short bursts in it.
std::vector<std::int16_t> Sky(int strikes) {
    constexpr std::size_t Frames = 32768;
    std::mt19937 random(3);
    std::normal_distribution<double> noise(0, 30);
    std::vector<std::int16_t> samples(2 * Frames);
    for (std::int16_t& s : samples) s = static_cast<std::int16_t>(noise(random));
    for (int i = 0; i < strikes; ++i) {
        const std::size_t at = Frames / static_cast<std::size_t>(strikes) * static_cast<std::size_t>(i) + 77;
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

/// Argument: strikes in a block of 1.5 s.
void PlainLoop(benchmark::State& state) {
    const std::vector<std::int16_t> sky = Sky(static_cast<int>(state.range(0)));
    Scopes scopes;
    PlainDetector detector({});
    detector.scopes = &scopes.feed;
    for (auto _ : state) {
        detector.Process(sky);
        detector.pulses.clear();
    }
    CountFrames(state, sky.size());
}
BENCHMARK(PlainLoop)->Arg(0)->Arg(5)->Arg(30);

void SampleLoop(benchmark::State& state) {
    const std::vector<std::int16_t> sky = Sky(static_cast<int>(state.range(0)));
    NoiseControl noise;
    Nobody nobody;
    SkipFailures failures;
    Scopes scopes;
    Detector detector(noise, nobody, [] { return 0; });
    detector.SetScopes(&scopes.feed);
    for (auto _ : state) benchmark::DoNotOptimize(detector.Process(sky, failures));
    CountFrames(state, sky.size());
}
BENCHMARK(SampleLoop)->Arg(0)->Arg(5)->Arg(30);

}  // namespace
