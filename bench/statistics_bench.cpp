// Rolling statistics and the sliding line fit against doing the work anew for each value.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

#include "common/class_median.h"
#include "detection/class_lkk.h"

namespace {

using namespace veltrix;

std::vector<double> Values() {
    std::mt19937 random(1);
    std::normal_distribution<double> value(0, 1000);
    std::vector<double> values(4096);
    for (double& v : values) v = value(random);
    return values;
}

constexpr std::size_t Capacity = 1000;

void MedianBySorting(benchmark::State& state) {
    const std::vector<double> values = Values();
    std::vector<double> ring(values.begin(), values.begin() + Capacity);
    std::vector<double> sorted(Capacity);
    std::size_t i = 0;
    for (auto _ : state) {
        ring[i % Capacity] = values[i % values.size()];
        ++i;
        sorted = ring;
        std::ranges::sort(sorted);
        benchmark::DoNotOptimize(sorted[Capacity / 2]);
    }
}
BENCHMARK(MedianBySorting);

void MedianUpdate(benchmark::State& state) {
    const std::vector<double> values = Values();
    ClassMedian median;
    median.Start(static_cast<std::int32_t>(Capacity));
    std::size_t i = 0;
    for (; i < Capacity; ++i) median.Update(values[i]);
    for (auto _ : state) {
        median.Update(values[i++ % values.size()]);
        benchmark::DoNotOptimize(median.Median());
    }
}
BENCHMARK(MedianUpdate);

constexpr std::size_t Window = 99;

void FitByRecomputing(benchmark::State& state) {
    const std::vector<double> values = Values();
    std::size_t i = 0;
    for (auto _ : state) {
        ClassLKK fit;
        fit.Init(Window);
        for (std::size_t k = 0; k < Window; ++k)
            fit.Update(values[(i + k) % values.size()], values[(i + k + 7) % values.size()]);
        ++i;
        benchmark::DoNotOptimize(fit.GetABYX().a);
    }
}
BENCHMARK(FitByRecomputing);

void FitUpdateAtAFullWindow(benchmark::State& state) {
    const std::vector<double> values = Values();
    ClassLKK fit;
    fit.Init(Window);
    std::size_t i = 0;
    for (; i < Window; ++i) fit.Update(values[i], values[i + 7]);
    for (auto _ : state) {
        fit.Update(values[i % values.size()], values[(i + 7) % values.size()]);
        ++i;
        benchmark::DoNotOptimize(fit.GetABYX().a);
    }
}
BENCHMARK(FitUpdateAtAFullWindow);

}  // namespace
