#include "common/sound_level.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace veltrix {

namespace {

constexpr double FullScale = 32768;
constexpr std::int32_t Least = -32768, Most = 32767;

/// So many halves of squares, 16 bits each, fit into a sum of 32 bits.
constexpr std::size_t MostFrames = 1 << 15;

double Decibels(double amplitude) {
    return amplitude > 0 ? 20 * std::log10(amplitude / FullScale) : -std::numeric_limits<double>::infinity();
}

/// Of one channel, in numbers of 32 bits; the squares are added up in halves.
struct ChannelSums {
    std::int32_t least = 0, most = 0;
    std::uint32_t lower = 0, upper = 0;

    void Add(std::int32_t sample) {
        const auto square = static_cast<std::uint32_t>(sample * sample);
        least = std::min(least, sample);
        most = std::max(most, sample);
        lower += square & 0xFFFF;
        upper += square >> 16;
    }
    SoundLevel::Channel Total() const {
        return {std::max(-least, most), least == Least || most == Most,
                (static_cast<std::uint64_t>(upper) << 16) + lower};
    }
};

std::uint32_t Clips(std::int32_t sample) {
    return static_cast<std::uint32_t>(sample == Least) | static_cast<std::uint32_t>(sample == Most);
}

/// All sums are of 32 bits and without branches, so that the compiler can work on many frames at once.
/// REQUIRES frames <= MostFrames.
SoundLevel LevelOf(const std::int16_t* samples, std::size_t frames) {
    ChannelSums lefts, rights;
    std::uint32_t clipped = 0, zeros = 0;
    for (std::size_t i = 0; i < frames; ++i) {
        const std::int32_t left = samples[2 * i];
        const std::int32_t right = samples[2 * i + 1];
        lefts.Add(left);
        rights.Add(right);
        clipped += Clips(left) | Clips(right);
        zeros += static_cast<std::uint32_t>((left | right) == 0);
    }
    return {{lefts.Total(), rights.Total()}, frames, clipped, zeros};
}

}  // namespace

double SoundLevel::Channel::PeakDb() const {
    return Decibels(peak);
}

double SoundLevel::Channel::RmsDb(std::uint64_t count) const {
    return count == 0 ? Decibels(0)
                      : Decibels(std::sqrt(static_cast<double>(squares) / static_cast<double>(count)));
}

SoundLevel SoundLevel::Of(std::span<const std::int16_t> samples) {
    SoundLevel level;
    const std::size_t frames = samples.size() / 2;
    for (std::size_t at = 0; at < frames; at += MostFrames)
        level.Add(LevelOf(&samples[2 * at], std::min(MostFrames, frames - at)));
    if (samples.size() % 2 == 1) {
        const std::array<std::int16_t, 2> last{samples.back(), 0};
        level.Add(LevelOf(last.data(), 1));
    }
    return level;
}

void SoundLevel::Add(const SoundLevel& other) {
    for (std::size_t channel = 0; channel < 2; ++channel) {
        channels[channel].peak = std::max(channels[channel].peak, other.channels[channel].peak);
        channels[channel].clips |= other.channels[channel].clips;
        channels[channel].squares += other.channels[channel].squares;
    }
    frames += other.frames;
    clippedFrames += other.clippedFrames;
    zeroFrames += other.zeroFrames;
}

void SoundLevelWindow::Advance(std::int64_t stretch) {
    if (!std::exchange(isStarted_, true)) stretch_ = stretch;
    const auto steps =
        std::clamp<std::int64_t>(stretch - stretch_, 0, static_cast<std::int64_t>(levels_.size()));
    stretch_ = std::max(stretch, stretch_);
    for (std::int64_t i = 0; i < steps; ++i) {
        at_ = (at_ + 1) % levels_.size();
        levels_[at_] = {};
    }
}

SoundLevel SoundLevelWindow::All() const {
    SoundLevel sum;
    for (const SoundLevel& level : levels_) sum.Add(level);
    return sum;
}

}  // namespace veltrix
