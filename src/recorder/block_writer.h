#pragma once
// Hands samples to the station, block by block.

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "recorder/block_files.h"
#include "recorder/frame_queue.h"
#include "recorder/sample_source.h"

namespace veltrix {

/// Sizes and times of a BlockWriter.
struct BlockWriterSettings {
    /// Largest block, bytes; whole frames of it are used. At least 4.
    std::size_t maxBytes = 128 * 1024;
    /// A block has at least these frames, but for the last one; a twentieth of a second.
    std::size_t leastFrames = RecorderSampleRate / 20;
    /// Frames that wait for a late station; half a minute outlasts its longest work.
    std::size_t queueFrames = std::size_t{30} * RecorderSampleRate;
    /// A station that takes no block for so long is gone.
    std::chrono::milliseconds untakenLimit = std::chrono::minutes(10);
    /// While there are no samples, an empty block asks so often whether the station is still there.
    std::chrono::milliseconds probeInterval = std::chrono::minutes(1);
    /// After a failure to write, the next try comes so much later.
    std::chrono::milliseconds retryInterval = std::chrono::seconds(1);
};

/// Queues frames and brings them, oldest first, under the block file's name as soon as that name is free. A
/// frame leaves the queue when its block stands there, complete. Frames that a late station costs are counted
/// and told once it has caught up, or after a minute. A failure to write is told once, too, and tried again
/// calmly; nothing is raised.
class BlockWriter {
  public:
    /// `files` must outlive it.
    BlockWriter(BlockFiles& files, const BlockWriterSettings& settings, Say say);

    /// Queues frames.
    void Take(std::span<const std::int16_t> samples);
    /// True when a source that waits should be read: less than two full blocks are queued.
    bool IsHungry() const;

    /// Does what is due at `now`; to be called every few milliseconds. `isLast`: no frame will follow, so
    /// that a short block may go, too.
    void Step(Moment now, bool isLast);

    /// True when the station has taken all there was.
    bool IsDone() const { return queue_.Size() == 0 && !stands_; }
    /// True when a block has stood for the limit, or the folder has been missing for as long.
    bool IsAbandoned(Moment now) const;

    /// What has happened since the start.
    struct Counts {
        std::uint64_t framesWritten = 0;
        std::uint64_t framesLost = 0;  ///< by a late station
        std::uint64_t blocksWritten = 0;
    };
    const Counts& Total() const { return total_; }

    /// Removes the file in progress and tells of losses that were not told yet.
    void Finish();

  private:
    bool WriteBlock(Moment now, bool isLast);
    bool IsTimeToTell(Moment now) const;
    void TellLosses();
    void TellTrouble(const std::string& what);

    BlockFiles& files_;
    BlockWriterSettings settings_;
    Say say_;
    FrameQueue queue_;
    std::vector<std::int16_t> block_;
    Counts total_;
    std::size_t lost_ = 0;  // frames in this episode
    std::optional<Moment> lossesSince_;
    bool stands_ = false;
    std::optional<Moment> untakenSince_;
    std::optional<Moment> lastPublished_;
    std::optional<Moment> retryAt_;
    std::string trouble_;  // the last one told; empty: all is well
};

}  // namespace veltrix
