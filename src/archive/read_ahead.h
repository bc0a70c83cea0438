#pragma once
// The samples of a recording, decoded ahead of who takes them.

#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "archive/recording.h"

namespace veltrix {

/// Hands out a recording piece by piece, the very samples that one thread reads from start to end. Several
/// threads decode pieces of a file that allows it; any other file one thread reads ahead; with one thread
/// nothing is read ahead. What waits to be taken is bounded, so that the memory does not depend on the
/// length. A file
/// that turns out to be damaged is read again in one go.
class ReadAhead {
  public:
    /// Frames of a piece; the last one is shorter.
    static constexpr std::int64_t PieceFrames = 1 << 18;

    /// Opens the recording. Throws BadRecording as Recording does. REQUIRES `threads` >= 1.
    ReadAhead(const std::string& name, unsigned threads);
    ~ReadAhead();
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    /// The next samples, left and right in turn, empty at the end; they stay until the next call. Throws
    /// BadRecording where the file is damaged, once all before is handed out.
    std::span<const std::int16_t> Next();

    /// Frames that the file says it has; 0 when it does not know.
    std::int64_t Frames() const { return frames_; }
    /// Frames handed out so far.
    std::int64_t Position() const { return position_; }

  private:
    struct Piece {
        std::vector<std::int16_t> samples;
        std::optional<BadRecording> failure;  // met behind these samples
    };

    static Piece ReadPiece(Recording& recording);
    void Decode(Recording& recording);
    std::optional<std::int64_t> Claim();
    Piece Take();
    Piece ReadAgain();
    void StopThreads();

    std::string name_;
    std::int64_t frames_ = 0;
    bool inParts_ = false;
    std::int64_t position_ = 0;
    bool isOver_ = false;
    Piece piece_;                       // in the hands of the caller
    std::unique_ptr<Recording> plain_;  // read by the caller's own thread, when there are no others

    std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::int64_t, Piece> decoded_;  // by number, not yet handed out
    std::int64_t nextToDecode_ = 0;
    std::int64_t nextToTake_ = 0;
    std::int64_t mostAhead_ = 0;
    bool stops_ = false;
    std::vector<std::jthread> threads_;
};

}  // namespace veltrix
