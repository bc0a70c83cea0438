#pragma once
// Frames that wait for the station, in memory of a fixed size.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace veltrix {

/// A ring of frames. When it is full, new frames push the oldest ones out, so that a station that comes back
/// finds what is fresh.
class FrameQueue {
  public:
    /// REQUIRES capacity > 0.
    explicit FrameQueue(std::size_t capacity) : ring_(2 * capacity) {}

    /// Frames that fit.
    std::size_t Capacity() const { return ring_.size() / 2; }
    /// Frames that wait.
    std::size_t Size() const { return size_; }

    /// Adds frames, samples left and right in turn; returns how many frames were pushed out and are lost.
    std::size_t Push(std::span<const std::int16_t> samples);
    /// Copies the oldest frames to `samples` without taking them. REQUIRES as many to be there.
    void Peek(std::span<std::int16_t> samples) const;
    /// Takes the oldest frames away. REQUIRES as many to be there.
    void Drop(std::size_t frames);

  private:
    std::vector<std::int16_t> ring_;
    std::size_t first_ = 0;  // frame
    std::size_t size_ = 0;   // frames
};

}  // namespace veltrix
