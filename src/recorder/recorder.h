#pragma once
// The recorder's run, from the source to the block file.

#include <functional>
#include <string>

#include "common/sound_level.h"
#include "recorder/block_writer.h"
#include "recorder/sample_source.h"
#include "recorder/state_file.h"

namespace veltrix {

/// Frames at full scale in what a source delivered, which were counted before the resampling where there is
/// one: a low-pass rounds the edges of clipped samples.
class ClippedCount {
  public:
    /// Adds what `level` tells of frames just read, and what the source tells of them.
    void Add(const SoundLevel& level, const SourceStatus& status);
    std::uint64_t Frames() const { return frames_; }

  private:
    std::uint64_t frames_ = 0;
    std::uint64_t seenBySource_ = 0;
};

/// Brings a source's samples to the block writer until it is told to stop, the source has ended and the
/// station has taken all, or no station takes blocks any more.
class Recorder {
  public:
    /// `gain` is a linear factor; products are rounded and saturated. `source`,
    /// `writer` and `file` must outlive it.
    Recorder(SampleSource& source, BlockWriter& writer, StateFile& file, double gain);

    /// Runs until `isStopped` says so or there is nothing more to do; returns why it ended, as a line for the
    /// user.
    std::string Run(const std::function<bool()>& isStopped);

  private:
    void MoveSamples(Moment now);
    RecorderState State() const;

    SampleSource& source_;
    BlockWriter& writer_;
    StateFile& file_;
    double gain_;
    std::vector<std::int16_t> samples_;
    SoundLevelWindow level_{5};  // seconds
    ClippedCount clipped_;
};

}  // namespace veltrix
