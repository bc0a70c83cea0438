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

/// Two channels of 22050 frames per second, read from start to end. The name "-" is standard input.
class Recording {
  public:
    /// Throws BadRecording when the file cannot be read or is no such recording.
    explicit Recording(const std::string& name);

    /// Frames that the file says it has; 0 when it does not know.
    std::int64_t Frames() const { return frames_; }

    /// Reads samples, left and right in turn, into `samples`, whose size is even; returns how many samples it
    /// read, 0 at the end. Throws BadRecording when the file is damaged.
    std::size_t Read(std::span<std::int16_t> samples);

    /// Frames read so far.
    std::int64_t Position() const { return position_; }

  private:
    struct Closer {
        void operator()(SNDFILE* file) const { sf_close(file); }
    };

    std::string name_;
    std::unique_ptr<SNDFILE, Closer> file_;
    std::int64_t frames_ = 0;
    std::int64_t position_ = 0;
};

}  // namespace veltrix
