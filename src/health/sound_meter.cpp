#include "health/sound_meter.h"

#include <utility>

#include "common/detection.h"

namespace veltrix {

SoundMeter::SoundMeter(Clock& clock)
    : clock_(clock), time_(clock), sinceDate_(clock.Now()), lastBlockDate_(sinceDate_) {}

void SoundMeter::BeginBlock() {
    // All frames of the block before are counted now.
    if (blocks_ > 0) rate_.Block(lastBlock_, frames_);
    ++blocks_;
    const std::int64_t now = time_.Now();
    lastBlockDate_ = clock_.Now();
    if (!std::exchange(arriving_, true) || now - lastBlock_ > StillSeconds * 1000) {
        since_ = now;
        sinceDate_ = lastBlockDate_;
    }
    lastBlock_ = now;
}

void SoundMeter::Take(std::span<const std::int16_t> samples) {
    const SoundLevel level = SoundLevel::Of(samples);
    frames_ += level.frames;
    clipped_ += level.clippedFrames;
    level_.Add(level);
    silentFrames_ = level.HasSound() ? 0 : silentFrames_ + level.frames;
}

SoundHealth SoundMeter::State() {
    const std::int64_t now = time_.Now();
    level_.Advance(now / 1000);
    if (arriving_ && now - lastBlock_ > StillSeconds * 1000) {
        arriving_ = false;
        since_ = lastBlock_;
        sinceDate_ = lastBlockDate_;
    }
    SoundHealth state{arriving_, sinceDate_, (now - since_) / 1000, blocks_, frames_, {}, level_.All(),
                      false,     clipped_};
    if (arriving_) state.rate = rate_.Measured();
    state.isDigitalSilence = arriving_ && static_cast<double>(silentFrames_) >= SilenceSeconds * SampleRate;
    return state;
}

}  // namespace veltrix
