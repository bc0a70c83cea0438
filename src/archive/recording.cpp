#include "archive/recording.h"

#include <algorithm>

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
    inParts_ = frames_ > 0 && (info.format & SF_FORMAT_TYPEMASK) == SF_FORMAT_FLAC;
    is16Bit_ = (info.format & SF_FORMAT_SUBMASK) == SF_FORMAT_PCM_16;
}

void Recording::Seek(std::int64_t frame) {
    if (sf_seek(file_.get(), frame, SEEK_SET) != frame)
        throw BadRecording{name_ + ": cannot be read from frame " + std::to_string(frame)};
    position_ = frame;
}

/// Samples of 16 bits need no conversion, which halves the time that a plain file takes.
std::size_t Recording::ReadFrom(std::span<std::int16_t> samples) {
    if (!is16Bit_) return ReadFrames(file_.get(), samples);
    const auto wanted = static_cast<sf_count_t>(samples.size() / 2);
    return static_cast<std::size_t>(
        std::max<sf_count_t>(sf_readf_short(file_.get(), samples.data(), wanted), 0));
}

std::size_t Recording::Read(std::span<std::int16_t> samples) {
    std::size_t got = 0;
    while (got < samples.size() / 2 && !isDamaged_) {
        const std::size_t more = ReadFrom(samples.subspan(2 * got));
        if (sf_error(file_.get()) != SF_ERR_NO_ERROR) isDamaged_ = true;
        if (more == 0) break;
        got += more;
    }
    position_ += static_cast<std::int64_t>(got);
    if (got > 0) return 2 * got;
    if (!isDamaged_ && position_ >= frames_) return 0;
    const std::string whole = frames_ > 0 ? " of " + std::to_string(frames_) : "";
    // A decoder hardly tells the one from the other.
    throw BadRecording{name_ + ": damaged or cut off after " + std::to_string(position_) + whole + " frames"};
}

}  // namespace veltrix
