// What a detection costs on the displays, each beside the plainest way of the same on a bare array of pixels.

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <vector>

#include "display/colours.h"
#include "station/form_displays.h"
#include "support/recording_errors.h"
#include "support/test_platform.h"

namespace {

using namespace veltrix;

constexpr int View = 557;
constexpr AmplitudeLimits Limits{-100, 0};

/// Displays on the surfaces of a form.
struct Displays {
    PlainGlyphs glyphs;
    RecordingErrors errors;
    FormControls controls{glyphs};
    FormDisplays displays{controls, errors};
};

/// The trail of the polar display as one writes it down at first: colours computed for each dot, no surface.
struct BareTrail {
    std::vector<ColourValue> pixels = std::vector<ColourValue>(std::size_t{View} * View);
    std::vector<ColourValue> clean = pixels;
    std::array<int, 1001> x{}, y{};
    std::array<ColourValue, 1001> family{};

    ColourValue& At(std::vector<ColourValue>& on, std::size_t i) {
        return on[static_cast<std::size_t>((View / 2 - y[i]) * View + View / 2 + x[i])];
    }
    void Update(int toX, int toY) {
        for (std::size_t i = 1000; i >= 1; --i) {
            x[i] = x[i - 1];
            y[i] = y[i - 1];
            family[i] = family[i - 1];
            const auto f = static_cast<int>(std::nearbyint(static_cast<double>(1000 - i) / 4));
            const auto g = std::max(0, static_cast<int>(std::nearbyint((500 - static_cast<double>(i)) / 2)));
            At(pixels, i) = i >= 996 ? At(clean, i) : family[i] == Cyan ? Rgb(0, g, f) : Rgb(f, g, 0);
        }
        x[0] = toX;
        y[0] = toY;
        family[0] = Yellow;
        At(pixels, 0) = White;
    }
};

void PolarTrailBare(benchmark::State& state) {
    BareTrail trail;
    double direction = 0;
    for (auto _ : state) {
        direction += 7.3;
        trail.Update(static_cast<int>(200 * std::sin(direction)),
                     static_cast<int>(200 * std::cos(direction)));
        benchmark::DoNotOptimize(trail.pixels.data());
    }
}
BENCHMARK(PolarTrailBare);

void GyrelUpdate(benchmark::State& state) {
    Displays form;
    double direction = 0;
    for (auto _ : state) form.displays.GyrelUpdate(direction += 7.3, -70, Limits, Yellow);
}
BENCHMARK(GyrelUpdate);

void HistoryPixelBare(benchmark::State& state) {
    std::vector<ColourValue> pixels(std::size_t{View} * View);
    const AmpColorTable table = BuildAmpColorTable();
    double direction = 0;
    for (auto _ : state) {
        direction = direction > 179 ? 0 : direction + 0.3;
        ColourValue& pixel =
            pixels[static_cast<std::size_t>(static_cast<int>(direction / 180 * View) * View + 200)];
        pixel = Rgb(std::max<int>(RedOf(pixel), table.AmpRed[100]),
                    std::max<int>(GreenOf(pixel), table.AmpGreen[100]),
                    std::max<int>(BlueOf(pixel), table.AmpBlue[100]));
        benchmark::DoNotOptimize(pixels.data());
    }
}
BENCHMARK(HistoryPixelBare);

void UpdateDisplay(benchmark::State& state) {
    Displays form;
    double direction = 0;
    for (auto _ : state) {
        direction = direction > 179 ? 0 : direction + 0.3;
        form.displays.UpdateDisplay(45458.4, direction, -60.8, Limits);
    }
}
BENCHMARK(UpdateDisplay);

void LocalDetectionOnBothDisplays(benchmark::State& state) {
    Displays form;
    double direction = 0;
    for (auto _ : state) {
        direction = direction > 359 ? 0 : direction + 7.3;
        form.displays.GyrelUpdate(direction, -70, Limits, Yellow);
        form.displays.UpdateDisplay(45458.4, direction, -70, Limits);
    }
}
BENCHMARK(LocalDetectionOnBothDisplays);

/// One compare and one store for each ring: what an idle frame costs at the least.
void ScopeFrameBare(benchmark::State& state) {
    std::array<double, 100> y{}, ns{}, ew{};
    std::size_t at = 0;
    double value = 100;
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        y[at] = std::min(3 * value, 6300.0) * 10;
        ns[at] = std::min(value, 2400.0) * 10;
        ew[at] = std::min(value, 2400.0) * 10;
        at = at == 99 ? 0 : at + 1;
        benchmark::ClobberMemory();
    }
}
BENCHMARK(ScopeFrameBare);

void ScopeFrameIdle(benchmark::State& state) {
    Displays form;
    double value = 100;
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        form.displays.ScopeTrigger(3 * value);
        form.displays.ScopeTriggerXY(value, value);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(ScopeFrameIdle);

/// A whole trace of both scopes: 99 frames, each with an erased and a drawn piece.
void ScopeTrace(benchmark::State& state) {
    Displays form;
    for (auto _ : state) {
        form.displays.Arm();
        for (int i = 0; i < 99; ++i) {
            const double value = i % 7 * 700;
            form.displays.ScopeTrigger(3 * value);
            form.displays.ScopeTriggerXY(value, -value);
        }
    }
}
BENCHMARK(ScopeTrace);

}  // namespace
