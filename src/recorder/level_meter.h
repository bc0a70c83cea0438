#pragma once
// A level meter in text, for putting up antennas and setting the sound card.

#include <array>
#include <cstddef>
#include <string>

#include "common/sound_level.h"
#include "recorder/sample_source.h"

namespace veltrix {

/// Hears frames and tells the level of the last second, the peak of the last five ("hold"), and whether that
/// suits a station.
class LevelMeter {
  public:
    /// What a level means for a station.
    enum class Verdict {
        Nothing,  ///< no frames, or zeros only
        TooLow,   ///< in five seconds no peak of LeastPeakDb
        Good,
        /// In the last five seconds a sample was at full scale, be it a single one: whoever turns the gain is
        /// to see each of them. A running station is content with few of them.
        Clipping,
    };

    /// Adds what came up to `now`, which never goes back; to be called also when nothing came.
    /// `clippedFrames`: as many of them were at full scale, in the source or now.
    void Add(const SoundLevel& level, std::uint64_t clippedFrames, Moment now);

    /// `channel`: 0 left, 1 right.
    Verdict VerdictOf(std::size_t channel) const;
    /// True when anything but zeros has been heard since the start.
    bool HasHeardSound() const { return total_.HasSound(); }

    /// Columns that a line of Bars() takes at least.
    static constexpr std::size_t LeastWidth = 70;

    /// One line a channel with a bar: # up to the RMS value, - up to the peak, | at the hold, ! where that
    /// clipped. `width`: columns there are.
    std::array<std::string, 2> Bars(std::size_t width) const;
    /// Both channels in figures.
    std::string Line() const;
    /// What all since the start came to, one line.
    std::string Summary() const;

  private:
    std::string FiguresOf(std::size_t channel) const;

    SoundLevelWindow second_{10};  // tenths of a second
    SoundLevelWindow hold_{5};     // seconds
    SoundLevel total_;
    SoundLevel lastSecond_;
    SoundLevel held_;
};

}  // namespace veltrix
