// The sample loop against a plain scalar loop of the same arithmetic, frame by frame.

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "bench/plain_detector.h"
#include "detection/detector.h"

namespace {

using namespace veltrix;

class Nobody final : public PulseReceiver {
  public:
    void OnTrigger() override {}
    void OnPulseEnd() override {}
    void ShowClipping(bool) override {}
    bool Deliver(const Pulse&, FailureHandler&) override { return true; }
};

/// Scopes as they are while no trace is drawn: they only remember.
class IdleScopes final : public ScopeFeed {
  public:
    void Arm() override {}
    void ScopeTrigger(double dValue) override { y_[at_++ % 100] = std::min(dValue, 6300.0) * 10; }
    void ScopeTriggerXY(double dNS, double dEW) override {
        ns_[atXY_ % 100] = dNS * 10;
        ew_[atXY_++ % 100] = dEW * 10;
    }
    bool Drawing() const override { return false; }
    void QuietFrames(std::size_t count, std::span<const double> ns, std::span<const double> ew) override {
        at_ += count - ns.size();
        atXY_ += count - ns.size();
        for (std::size_t i = 0; i < ns.size(); ++i) {
            ScopeTrigger(3 * std::sqrt(ns[i] * ns[i] + ew[i] * ew[i]));
            ScopeTriggerXY(ns[i], ew[i]);
        }
    }
    void MarkFit(double, double) override {}

  private:
    double y_[100] = {}, ns_[100] = {}, ew_[100] = {};
    std::size_t at_ = 0, atXY_ = 0;
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
    PlainDetector detector({});
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
    IdleScopes scopes;
    Detector detector(noise, nobody, [] { return 0; });
    detector.SetScopes(&scopes);
    for (auto _ : state) benchmark::DoNotOptimize(detector.Process(sky, failures));
    CountFrames(state, sky.size());
}
BENCHMARK(SampleLoop)->Arg(0)->Arg(5)->Arg(30);

}  // namespace
