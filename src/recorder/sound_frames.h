#pragma once
// Frames of a sound file as the samples that a sound card would have given.

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>

namespace veltrix {

/// A sample of full scale 1 as 16 bit, rounded; what goes beyond is clipped.
inline std::int16_t SampleOf(float value) {
    return static_cast<std::int16_t>(std::lrint(std::clamp(value * 32768.0F, -32768.0F, 32767.0F)));
}

/// Multiplies samples by a linear factor; products are rounded and clipped.
inline void ApplyGain(std::span<std::int16_t> samples, double gain) {
    if (gain == 1) return;
    for (std::int16_t& sample : samples)
        sample = static_cast<std::int16_t>(std::lrint(std::clamp(gain * sample, -32768.0, 32767.0)));
}

/// Reads up to as many frames of two channels as `samples` holds and returns how many it were; fewer only at
/// the end of the file. Full scale is 32768 whatever format the file has, so that a quiet recording stays
/// quiet; what goes beyond is clipped. REQUIRES a file of two channels.
inline std::size_t ReadFrames(SNDFILE* file, std::span<std::int16_t> samples) {
    std::array<float, 8192> piece;
    std::size_t frames = 0;
    while (frames < samples.size() / 2) {
        const std::size_t wanted = std::min(piece.size() / 2, samples.size() / 2 - frames);
        const sf_count_t got = sf_readf_float(file, piece.data(), static_cast<sf_count_t>(wanted));
        if (got <= 0) break;
        const auto read = static_cast<std::size_t>(got);
        for (std::size_t i = 0; i < 2 * read; ++i) samples[2 * frames + i] = SampleOf(piece[i]);
        frames += read;
    }
    return frames;
}

}  // namespace veltrix
