#pragma once
// Frames of another rate as the frames that a station works with.

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "recorder/sample_source.h"

namespace veltrix {

/// Brings two channels from the rate of a sound card or file to 22050 Hz, through one steep low-pass for
/// both, so that their phases stay together. As many frames come out as the length of the input calls for.
/// Needs some ten milliseconds of input ahead.
class Resampler {
  public:
    static constexpr int LeastRate = 4000;      ///< frames a second
    static constexpr int LargestRate = 768000;  ///< frames a second

    /// Fills the front of a span with frames of the input, full scale 1, and returns their number; 0 when
    /// there are none now.
    using Input = std::function<std::size_t(std::span<float> samples)>;

    /// `rate`: of the input, frames a second. Raises InvalidCall outside the limits.
    explicit Resampler(int rate);
    ~Resampler();
    Resampler(const Resampler&) = delete;
    Resampler& operator=(const Resampler&) = delete;

    /// Of the input, frames a second.
    int Rate() const { return rate_; }

    /// Fills the front of `samples` with frames at 22050 Hz, rounded and clipped, and takes no more of the
    /// input than is needed; returns their number, fewer than fit only when the input has none now.
    std::size_t Read(std::span<std::int16_t> samples, const Input& input);
    /// The frames that the input so far still owes, once no more of it comes; 0 when that was all, and then
    /// it is of no further use.
    std::size_t Drain(std::span<std::int16_t> samples);

    /// Frames of the input at full scale, counted at 22050 Hz. Behind the low-pass they can no longer be
    /// told.
    std::uint64_t ClippedFrames() const;

  private:
    struct Converter;

    void Refill(const Input& input);
    std::size_t Convert(std::span<std::int16_t> samples, bool isLast);

    int rate_;
    std::unique_ptr<Converter> converter_;
    std::vector<float> input_;
    std::span<const float> pending_;  // of input_, not taken yet
    std::vector<float> output_;
    std::uint64_t clipped_ = 0;  // at the rate of the input
};

}  // namespace veltrix
