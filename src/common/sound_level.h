#pragma once
// How strong sound is: the one measure of it, for the recorder and for the station.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace veltrix {

/// Below this peak, in dB of full scale, sound is too low: even the strongest signal stays 10 dB below the
/// threshold of 80 dB that a new station starts with. The antenna or a cable is off, or the gain too low.
inline constexpr double LeastPeakDb = -50;

/// What a stretch of frames came to. Decibels are relative to full scale, 32768; minus infinity when all
/// samples were 0 or none came.
struct SoundLevel {
    /// Of one channel.
    struct Channel {
        std::int32_t peak = 0;      ///< largest absolute value
        bool clips = false;         ///< a sample at -32768 or 32767
        std::uint64_t squares = 0;  ///< sum; holds nine days of nothing but full scale

        /// The peak in decibels.
        double PeakDb() const;
        /// The root of the mean square in decibels; a full-scale sine has -3.0. `count`: frames of the
        /// stretch.
        double RmsDb(std::uint64_t count) const;
    };

    std::array<Channel, 2> channels;  ///< left (north-south), right (east-west)
    std::uint64_t frames = 0;
    std::uint64_t clippedFrames = 0;  ///< with a sample at -32768 or 32767
    std::uint64_t zeroFrames = 0;     ///< of which both samples are exactly 0

    /// That of samples, left and right in turn; a last one without its right one counts as a frame with a
    /// right sample of 0. Costs, per frame, a small part of what detection costs.
    static SoundLevel Of(std::span<const std::int16_t> samples);
    /// Adds another stretch.
    void Add(const SoundLevel& other);
    /// True when anything but zeros was among the frames.
    bool HasSound() const { return zeroFrames < frames; }
};

/// The level of the last time, put together of stretches of the same length. Allocates at its construction
/// only.
class SoundLevelWindow {
  public:
    /// REQUIRES stretches > 0.
    explicit SoundLevelWindow(std::size_t stretches) : levels_(stretches) {}

    /// Moves on to the stretch of that number, as any clock counts them that never goes back; a number below
    /// the present one changes nothing. To be called also when nothing came, so that what is too old is
    /// forgotten. Before the first call the present stretch has no number yet.
    void Advance(std::int64_t stretch);
    /// Adds to the present stretch.
    void Add(const SoundLevel& level) { levels_[at_].Add(level); }

    /// The level of all stretches.
    SoundLevel All() const;

  private:
    std::vector<SoundLevel> levels_;
    std::size_t at_ = 0;
    std::int64_t stretch_ = 0;
    bool isStarted_ = false;
};

}  // namespace veltrix
