#pragma once
// Where the recorder's samples come from.

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <utility>

namespace veltrix {

/// Frames a second that a station works with.
inline constexpr int RecorderSampleRate = 22050;

/// A point of the monotonic clock.
using Moment = std::chrono::steady_clock::time_point;

/// Takes one line for the user.
using Say = std::function<void(const std::string& line)>;

/// What a source is doing, for whoever watches it.
struct SourceStatus {
    enum class State {
        Recording,
        Waiting,  ///< for a card or a file that is not there, or does not answer
        Silent,   ///< exact zeros are held back
        Ended
    };

    State state = State::Recording;
    std::string kind;                 ///< "card", "file" or "storm"
    std::string device;               ///< the card, file or scenario at work; empty when none is
    int rate = RecorderSampleRate;    ///< frames a second that it delivers
    std::uint64_t framesLost = 0;     ///< that are known to have been lost before they could be read
    std::uint64_t framesClipped = 0;  ///< at full scale before they were resampled
};

/// A source of frames, left (north-south) and right (east-west) sample in turn.
class SampleSource {
  public:
    explicit SampleSource(std::string kind) { status_.kind = std::move(kind); }
    virtual ~SampleSource() = default;

    /// Fills the front of `samples` with the frames that have come up to `now` and returns their number, as
    /// many as fit at most. Does not wait for frames; 0 when there are none. `now` never goes back.
    virtual std::size_t Read(std::span<std::int16_t> samples, Moment now) = 0;

    /// True when no frame will come any more.
    bool HasEnded() const { return status_.state == SourceStatus::State::Ended; }

    /// What it is doing, as of the last Read().
    const SourceStatus& Status() const { return status_; }

    /// True when frames wait until they are read; else those that nobody reads are lost.
    virtual bool Waits() const { return false; }

    /// Lets go of the device, after the last Read(). False when the sound system does not answer: then the
    /// program has to leave at once, for its libraries would wait at its end, too.
    virtual bool Release() { return true; }

  protected:
    SourceStatus status_;
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
