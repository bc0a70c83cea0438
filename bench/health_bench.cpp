// What it costs to watch over a station: the input level of each block, beside a plain way, and the gathering
// of all figures once a second.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>
#include <vector>

#include "common/sound_level.h"
#include "health/health_json.h"
#include "health/health_prometheus.h"
#include "health/status_texts.h"
#include "tests/health/sample_report.h"

namespace {

using namespace veltrix;

/// What a recorder gives in 100 ms.
std::vector<std::int16_t> Block() {
    std::vector<std::int16_t> samples;
    std::mt19937 random(1);
    std::normal_distribution<double> noise(0, 300);
    for (int i = 0; i < 2 * 2205; ++i) samples.push_back(static_cast<std::int16_t>(noise(random)));
    return samples;
}

void InputLevelOfABlock(benchmark::State& state) {
    const std::vector<std::int16_t> block = Block();
    SoundLevelWindow level(60);
    for (auto _ : state) {
        level.Add(SoundLevel::Of(block));
        benchmark::DoNotOptimize(level);
    }
    state.SetItemsProcessed(state.iterations() * 2205);
}
BENCHMARK(InputLevelOfABlock);

/// The plain way: frame by frame, in floating point.
void InputLevelOfABlockPlain(benchmark::State& state) {
    const std::vector<std::int16_t> block = Block();
    double peak[2] = {}, squares[2] = {};
    std::uint64_t clipped = 0, zeros = 0;
    for (auto _ : state) {
        for (std::size_t i = 0; i < block.size(); i += 2) {
            bool isClipped = false;
            for (const std::size_t channel : {0, 1}) {
                const double sample = block[i + channel];
                peak[channel] = std::max(peak[channel], std::abs(sample));
                squares[channel] += sample * sample;
                isClipped = isClipped || sample == 32767 || sample == -32768;
            }
            if (isClipped) ++clipped;
            if (block[i] == 0 && block[i + 1] == 0) ++zeros;
        }
        benchmark::DoNotOptimize(peak);
        benchmark::DoNotOptimize(squares);
        benchmark::DoNotOptimize(clipped);
        benchmark::DoNotOptimize(zeros);
    }
    state.SetItemsProcessed(state.iterations() * 2205);
}
BENCHMARK(InputLevelOfABlockPlain);

/// The texts of the status bar, every second.
void TextsOfTheStatusBar(benchmark::State& state) {
    const HealthReport report = SampleReport();
    for (auto _ : state) benchmark::DoNotOptimize(StatusCells(report));
}
BENCHMARK(TextsOfTheStatusBar);

/// The content of both files, every minute.
void ContentOfTheStatsFiles(benchmark::State& state) {
    const HealthReport report = SampleReport();
    for (auto _ : state) {
        benchmark::DoNotOptimize(HealthJson(report));
        benchmark::DoNotOptimize(HealthPrometheus(report));
    }
}
BENCHMARK(ContentOfTheStatsFiles);

}  // namespace
