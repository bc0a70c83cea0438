#include "recording.h"

#include "common/detection.h"
#include "recorder/sound_frames.h"

namespace veltrix {

namespace {

constexpr int StandardInput = 0;

}  // namespace

Recording::Recording(const std::string& name) : name_(name) {
    SF_INFO info{};
    file_.reset(name == "-" ? sf_open_fd(StandardInput, SFM_READ, &info, SF_FALSE)
                            : sf_open(name.c_str(), SFM_READ, &info));
    if (!file_) throw BadRecording{name + ": " + sf_strerror(nullptr)};
    if (info.channels != 2)
        throw BadRecording{name + ": has " + std::to_string(info.channels) +
                           " channel(s), two antennas need 2"};
    if (info.samplerate != static_cast<int>(SampleRate))
        throw BadRecording{name + ": has " + std::to_string(info.samplerate) +
                           " frames per second, 22050 are needed (sox can convert it)"};
    // A pipe does not know its length and says the largest number there is.
    frames_ = info.seekable ? info.frames : 0;
}

std::size_t Recording::Read(std::span<std::int16_t> samples) {
    const std::size_t got = ReadFrames(file_.get(), samples);
    position_ += static_cast<sf_count_t>(got);
    if (got == 0) {
        if (sf_error(file_.get()) != SF_ERR_NO_ERROR)
            throw BadRecording{name_ + ": " + sf_strerror(file_.get())};
        if (position_ < frames_)
            throw BadRecording{name_ + ": ends after " + std::to_string(position_) + " of " +
                               std::to_string(frames_) + " frames"};
    }
    return 2 * got;
}

}  // namespace veltrix
