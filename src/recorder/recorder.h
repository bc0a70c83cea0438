#pragma once
// The recorder's run, from the source to the block file.

#include <functional>
#include <string>

#include "recorder/block_writer.h"
#include "recorder/sample_source.h"

namespace veltrix {

/// Brings a source's samples to the block writer until it is told to stop, the source has ended and the
/// station has taken all, or no station takes blocks any more.
class Recorder {
  public:
    /// `gain` is a linear factor; products are rounded and saturated. `source` and `writer` must outlive it.
    Recorder(SampleSource& source, BlockWriter& writer, double gain);

    /// Runs until `isStopped` says so or there is nothing more to do; returns why it ended, as a line for the
    /// user.
    std::string Run(const std::function<bool()>& isStopped);

  private:
    void MoveSamples(Moment now);

    SampleSource& source_;
    BlockWriter& writer_;
    double gain_;
    std::vector<std::int16_t> samples_;
};

}  // namespace veltrix
