#pragma once
// A recording of the two antennas in a sound file.

#include <sndfile.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace veltrix {

/// Why a recording cannot be used: one clear line.
struct BadRecording {
    std::string text;
};

/// Two channels of 22050 frames per second. The name "-" is standard input.
class Recording {
  public:
    /// Throws BadRecording when the file cannot be read or is no such recording.
    explicit Recording(const std::string& name);

    /// Frames that the file says it has; 0 when it does not know.
    std::int64_t Frames() const { return frames_; }

    /// True when the file can be read from any frame on, and to decode it costs far more than to fetch it, so
    /// that it pays to decode parts of it at the same time.
    bool DecodesInParts() const { return inParts_; }

    /// Goes to a frame. Throws BadRecording when it cannot. REQUIRES DecodesInParts().
    void Seek(std::int64_t frame);

    /// Reads samples, left and right in turn, into `samples`, whose size is even; returns how many samples it
    /// read, fewer than asked for at the end or before a damaged place, 0 at the end. Throws BadRecording at
    /// a damaged place, and where the file ends before its time.
    std::size_t Read(std::span<std::int16_t> samples);

    /// The number of the next frame.
    std::int64_t Position() const { return position_; }

  private:
    struct Closer {
        void operator()(SNDFILE* file) const { sf_close(file); }
    };

    std::size_t ReadFrom(std::span<std::int16_t> samples);

    std::string name_;
    std::unique_ptr<SNDFILE, Closer> file_;
    std::int64_t frames_ = 0;
    std::int64_t position_ = 0;
    bool inParts_ = false;
    bool is16Bit_ = false;
    bool isDamaged_ = false;  // such a place was met
};

}  // namespace veltrix
