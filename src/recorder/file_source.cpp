#include "recorder/file_source.h"

#include <sndfile.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "common/failure.h"
#include "recorder/sound_frames.h"

namespace veltrix {

struct FileSource::File {
    explicit File(const std::string& name) : handle(sf_open(name.c_str(), SFM_READ, &info)) {}
    ~File() {
        if (handle != nullptr) sf_close(handle);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    SF_INFO info{};
    SNDFILE* handle;
    sf_count_t framesRead = 0;
};

FileSource::FileSource(const std::string& name, Speed speed, Say say)
    : name_(name), speed_(speed), say_(std::move(say)), file_(std::make_unique<File>(name)) {
    if (file_->handle == nullptr)
        throw Failure(errors::FileNotFound, name + ": " + sf_strerror(nullptr), "recorder");
    const SF_INFO& info = file_->info;
    if (info.channels != 2)
        throw Failure(errors::InvalidCall,
                      name + ": has " + std::to_string(info.channels) +
                          (info.channels == 1 ? " channel" : " channels") +
                          "; two are needed, left north-south and right east-west",
                      "recorder");
    if (info.samplerate != RecorderSampleRate)
        throw Failure(
            errors::InvalidCall,
            name + ": has " + std::to_string(info.samplerate) + " frames a second; 22050 are needed",
            "recorder");
}

FileSource::~FileSource() = default;

std::size_t FileSource::Read(std::span<std::int16_t> samples, Moment now) {
    if (hasEnded_) return 0;
    std::size_t wanted = samples.size() / 2;
    if (speed_ == Speed::Real)
        wanted = std::min(wanted, static_cast<std::size_t>(std::max<std::int64_t>(pacer_.Due(now), 0)));
    const std::size_t frames = ReadFrames(file_->handle, samples.first(2 * wanted));
    file_->framesRead += static_cast<sf_count_t>(frames);
    pacer_.HandOut(frames);
    if (frames < wanted) End();
    return frames;
}

void FileSource::End() {
    hasEnded_ = true;
    const sf_count_t claimed = file_->info.frames;
    // Some formats do not know their length when they come through a pipe.
    const bool knowsLength = claimed > 0 && claimed < std::numeric_limits<sf_count_t>::max();
    const bool isShort = knowsLength && file_->framesRead < claimed;
    say_(name_ + (isShort ? ": is cut off: " : ": has ended: ") + std::to_string(file_->framesRead) +
         (isShort ? " of " + std::to_string(claimed) : std::string()) + " frames");
}

}  // namespace veltrix
