#pragma once
// Where the recorder's samples come from.

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace veltrix {

/// Frames a second that a station works with.
inline constexpr int RecorderSampleRate = 22050;

/// A point of the monotonic clock.
using Moment = std::chrono::steady_clock::time_point;

/// Takes one line for the user.
using Say = std::function<void(const std::string& line)>;

/// A source of frames, left (north-south) and right (east-west) sample in turn.
class SampleSource {
  public:
    virtual ~SampleSource() = default;

    /// Fills the front of `samples` with the frames that have come up to `now` and returns their number, as
    /// many as fit at most. Does not wait for frames; 0 when there are none. `now` never goes back.
    virtual std::size_t Read(std::span<std::int16_t> samples, Moment now) = 0;

    /// True when no frame will come any more.
    virtual bool HasEnded() const { return false; }

    /// True when frames wait until they are read; else those that nobody reads are lost.
    virtual bool Waits() const { return false; }
};

/// Measures out frames by the clock, like a sound card. The first call starts it.
class Pacer {
  public:
    /// `rate`: frames a second.
    explicit Pacer(double rate) : rate_(rate) {}

    /// Frames that are due at `now` and have not been handed out.
    std::int64_t Due(Moment now) {
        if (!isStarted_) start_ = now;
        isStarted_ = true;
        return static_cast<std::int64_t>(std::chrono::duration<double>(now - start_).count() * rate_) -
               handedOut_;
    }
    void HandOut(std::size_t frames) { handedOut_ += static_cast<std::int64_t>(frames); }

  private:
    double rate_;
    bool isStarted_ = false;
    Moment start_;
    std::int64_t handedOut_ = 0;
};

}  // namespace veltrix
