#include "storm/renderer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "storm/hash_random.h"
#include "storm/sferic.h"

namespace veltrix {

namespace {

__extension__ typedef __int128 Wide;

constexpr std::int64_t GigasecondNanoseconds = 1'000'000'000 * NanosecondsPerSecond;
constexpr UtcTime PulseTime = static_cast<UtcTime>(SfericLength * 1e9) + 1;
constexpr std::uint64_t ForNoise = 3;

/// The quotient rounded down; `b` positive.
std::int64_t FloorDivide(Wide a, Wide b) {
    return static_cast<std::int64_t>(a / b - (a % b < 0 ? 1 : 0));
}

std::int16_t Saturated(double value) {
    constexpr double Least = std::numeric_limits<std::int16_t>::min();
    constexpr double Greatest = std::numeric_limits<std::int16_t>::max();
    return static_cast<std::int16_t>(std::lrint(std::clamp(value, Least, Greatest)));
}

}  // namespace

SampleGrid::SampleGrid(UtcTime start, double clockErrorPpm)
    : start_(start),
      framesPerGigasecond_(StormSampleRate * (1'000'000'000 + std::llround(clockErrorPpm * 1000))) {}

UtcTime SampleGrid::TimeOf(std::int64_t frame) const {
    return start_ + FloorDivide(Wide(frame) * GigasecondNanoseconds, framesPerGigasecond_);
}

std::int64_t SampleGrid::FrameFrom(UtcTime time) const {
    return -FloorDivide(-Wide(time - start_) * framesPerGigasecond_, GigasecondNanoseconds);
}

double SampleGrid::Period() const {
    return 1e9 / static_cast<double>(framesPerGigasecond_);
}

Renderer::Renderer(const Scenario& scenario, std::size_t station, UtcTime start)
    : station_(scenario.stations.at(station)),
      strikes_(scenario),
      grid_(scenario.start, station_.clockError),
      noiseKey_(MixedKey(scenario.seed, ForNoise, station)),
      next_(grid_.FrameFrom(start)),
      block_(FloorDivide(next_, BlockFrames) - 1) {}

void Renderer::Render(std::span<std::int16_t> samples) {
    while (samples.size() >= 2) {
        const std::int64_t block = FloorDivide(next_, BlockFrames);
        if (block != block_) RenderBlock(block);
        const auto offset = static_cast<std::size_t>(next_ - block * BlockFrames) * 2;
        const std::size_t count = std::min(samples_.size() - offset, samples.size() / 2 * 2);
        std::copy_n(samples_.begin() + static_cast<std::ptrdiff_t>(offset), count, samples.begin());
        samples = samples.subspan(count);
        next_ += static_cast<std::int64_t>(count / 2);
    }
}

void Renderer::RenderBlock(std::int64_t block) {
    const std::int64_t first = block * BlockFrames;
    const UtcTime blockTime = grid_.TimeOf(first);
    const UtcTime blockEnd = grid_.TimeOf(first + BlockFrames);
    AddNoiseAndHum(first);
    FindPulses(blockTime - PulseTime - LongestTravel, blockEnd);
    for (const Pulse& pulse : pulses_)
        if (pulse.time < blockEnd && pulse.time > blockTime - PulseTime) AddPulse(pulse, blockTime);
    std::ranges::transform(sums_, samples_.begin(), Saturated);
    block_ = block;
}

void Renderer::AddNoiseAndHum(std::int64_t firstFrame) {
    const double period = grid_.Period();
    const double startSeconds = static_cast<double>(firstFrame) * period;
    const double cycles = startSeconds * station_.humFrequency;
    const double startAngle = 2 * std::numbers::pi * (cycles - std::floor(cycles));
    const double angleStep = 2 * std::numbers::pi * station_.humFrequency * period;
    for (std::size_t i = 0; i < static_cast<std::size_t>(BlockFrames); ++i) {
        const double hum =
            station_.hum == 0 ? 0 : station_.hum * std::sin(startAngle + angleStep * static_cast<double>(i));
        const auto frame = static_cast<std::uint64_t>(firstFrame) + i;
        const NormalPair noise = station_.noise == 0 ? NormalPair{} : NormalOf(MixedKey(noiseKey_, frame));
        sums_[2 * i] = hum + station_.noise * noise.first;
        sums_[2 * i + 1] = hum + station_.noise * noise.second;
    }
}

void Renderer::AddPulse(const Pulse& pulse, UtcTime blockTime) {
    const double period = grid_.Period();
    const double onset =
        static_cast<double>(pulse.time - blockTime) * 1e-9;  // s after the block's first frame
    const double first = std::max(0.0, std::ceil(onset / period));
    const double end = std::min(static_cast<double>(BlockFrames), std::ceil((onset + SfericLength) / period));
    for (double i = first; i < end; ++i) {
        const double value = SfericAt(i * period - onset);
        const std::size_t at = 2 * static_cast<std::size_t>(i);
        sums_[at] += pulse.left * value;
        sums_[at + 1] += pulse.right * value;
    }
}

/// Sees to it that pulses_ holds those of all strikes between two instants. Strikes are drawn by whole
/// seconds, so they are asked for a second at a time.
void Renderer::FindPulses(UtcTime from, UtcTime to) {
    if (from < pulsesFrom_ || from > pulsesTo_) {
        pulses_.clear();
        pulsesFrom_ = pulsesTo_ = from;
    }
    if (to <= pulsesTo_) return;
    std::erase_if(pulses_, [from](const Pulse& pulse) { return pulse.time < from; });
    pulsesFrom_ = from;
    const UtcTime upTo = to + NanosecondsPerSecond;
    for (const Strike& strike : strikes_.Between(pulsesTo_, upTo)) {
        const Arrival arrival = propagation_.At(station_, strike);
        const double angle = arrival.antennaBearing * std::numbers::pi / 180;
        const double peak = arrival.peak * strike.polarity;
        pulses_.push_back({arrival.time, peak * std::cos(angle), peak * std::sin(angle)});
    }
    pulsesTo_ = upTo;
}

}  // namespace veltrix
