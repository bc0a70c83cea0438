#pragma once
// What comes from the recorder, block by block.

#include <cstdint>
#include <optional>
#include <span>

#include "common/sound_level.h"
#include "health/long_time.h"
#include "health/sample_rate_meter.h"

namespace veltrix {

/// What the sound is like at a moment.
struct SoundHealth {
    bool arriving = false;        ///< a block was taken in the last StillSeconds
    DateTime since = 0;           ///< when that began: first block, or last one, or the start of the station
    std::int64_t secondsAgo = 0;  ///< the same by a clock that nobody sets
    std::uint64_t blocks = 0;     ///< since start
    std::uint64_t frames = 0;     ///< since start
    std::optional<MeasuredRate> rate;
    SoundLevel minute;              ///< of the last 60 s
    bool isDigitalSilence = false;  ///< the last SilenceSeconds of arriving sound were exact zeros
    std::uint64_t clipped = 0;      ///< frames since start
};

/// Sees every block on its way to the detector. Owned by the sample loop.
class SoundMeter {
  public:
    explicit SoundMeter(Clock& clock);

    /// A block has been opened.
    void BeginBlock();
    /// Its samples, in one piece or more.
    void Take(std::span<const std::int16_t> samples);

    /// The present state. REQUIRES to be called once a second, by which the windows move on.
    SoundHealth State();

    /// Without a block for so long, no sound arrives; so much sound of exact zeros is none.
    static constexpr int StillSeconds = 3;
    static constexpr int SilenceSeconds = 10;

  private:
    Clock& clock_;
    LongTime time_;
    SoundLevelWindow level_{61};  // seconds: the present one and those of a minute
    SampleRateMeter rate_;
    bool arriving_ = false;
    std::int64_t since_ = 0;
    DateTime sinceDate_;
    std::int64_t lastBlock_ = 0;
    DateTime lastBlockDate_;
    std::uint64_t blocks_ = 0;
    std::uint64_t frames_ = 0;
    std::uint64_t clipped_ = 0;
    std::uint64_t silentFrames_ = 0;  // exact zeros since the last sample that was none
};

}  // namespace veltrix
