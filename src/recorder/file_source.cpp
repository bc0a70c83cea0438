#include "recorder/file_source.h"

#include <sndfile.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <system_error>
#include <utility>

#include "common/failure.h"
#include "recorder/sound_frames.h"

namespace veltrix {

namespace {

namespace fs = std::filesystem;
using State = SourceStatus::State;

constexpr auto LookInterval = std::chrono::seconds(2);
/// Files that are waited for may still be growing; one that was changed so lately is left alone.
constexpr auto SettledAfter = std::chrono::seconds(10);
constexpr std::size_t MostToldProblems = 1000;

bool IsSettled(const std::string& name) {
    std::error_code error;
    const fs::file_time_type changed = fs::last_write_time(name, error);
    if (error) return false;
    const auto age = fs::file_time_type::clock::now() - changed;
    // A time to come is that of another computer's clock and tells nothing.
    return age >= SettledAfter || age < std::chrono::nanoseconds(0);
}

}  // namespace

struct FileSource::File {
    explicit File(std::string fileName)
        : name(std::move(fileName)), handle(sf_open(name.c_str(), SFM_READ, &info)) {}
    ~File() {
        if (handle != nullptr) sf_close(handle);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    std::string name;
    SF_INFO info{};
    SNDFILE* handle;
    sf_count_t framesRead = 0;
};

FileSource::FileSource(const std::string& names, Speed speed, AtEnd atEnd, Say say)
    : SampleSource("file"), list_(names), speed_(speed), atEnd_(atEnd), say_(std::move(say)) {
    if (OpenNext() || atEnd_ == AtEnd::Wait) return;
    if (lastProblem_.empty()) throw Failure(errors::FileNotFound, names + ": no such files", "recorder");
    throw Failure(lastProblemNumber_, lastProblem_, "recorder");
}

FileSource::~FileSource() = default;

std::size_t FileSource::Read(std::span<std::int16_t> samples, Moment now) {
    if (HasEnded() || (lookAgainAt_ && now < *lookAgainAt_)) return 0;
    std::size_t wanted = samples.size() / 2;
    if (speed_ == Speed::Real)
        wanted = std::min(wanted, static_cast<std::size_t>(std::max<std::int64_t>(pacer_.Due(now), 0)));
    std::size_t frames = 0;
    while (frames < wanted) {
        const std::size_t more = ReadOn(samples.subspan(2 * frames, 2 * (wanted - frames)), now);
        if (more == 0) break;
        frames += more;
    }
    pacer_.HandOut(frames);
    return frames;
}

/// Frames of the file at hand or the next one; 0 when there is none.
std::size_t FileSource::ReadOn(std::span<std::int16_t> samples, Moment now) {
    for (;;) {
        const bool isOpen = file_ || OpenNext();
        const int rate = isOpen ? file_->info.samplerate : RecorderSampleRate;
        if (resampler_ && resampler_->Rate() != rate) {
            if (const std::size_t rest = resampler_->Drain(samples); rest > 0) return rest;
            clippedBefore_ += resampler_->ClippedFrames();
            resampler_.reset();
        }
        if (!isOpen) {
            RunOut(now);
            return 0;
        }
        if (rate != RecorderSampleRate && !resampler_) resampler_ = std::make_unique<Resampler>(rate);

        const sf_count_t before = file_->framesRead;
        std::size_t frames = 0;
        if (resampler_) {
            frames = resampler_->Read(samples, [this](std::span<float> input) {
                const auto room = static_cast<sf_count_t>(input.size() / 2);
                const sf_count_t got =
                    std::max<sf_count_t>(sf_readf_float(file_->handle, input.data(), room), 0);
                file_->framesRead += got;
                return static_cast<std::size_t>(got);
            });
            status_.framesClipped = clippedBefore_ + resampler_->ClippedFrames();
        } else {
            frames = ReadFrames(file_->handle, samples);
            file_->framesRead += static_cast<sf_count_t>(frames);
        }
        framesThisRound_ += static_cast<std::uint64_t>(file_->framesRead - before);
        // Fewer than fit come at the end of the file only.
        if (2 * frames < samples.size()) CloseFile();
        if (frames > 0) return frames;
    }
}

/// True when another file is open now.
bool FileSource::OpenNext() {
    while (const std::optional<std::string> name = list_.Next()) {
        if (atEnd_ == AtEnd::Wait && !IsSettled(*name)) return false;
        list_.Take(*name);
        if (!Open(*name)) continue;
        if (status_.state == State::Waiting) pacer_ = Pacer(RecorderSampleRate);
        lookAgainAt_.reset();
        status_.state = State::Recording;
        return true;
    }
    if (atEnd_ != AtEnd::Again || framesThisRound_ == 0) return false;
    if (isFirstRound_) say_("the last file has ended; from the first one on again");
    isFirstRound_ = false;
    framesThisRound_ = 0;
    list_.Rewind();
    return OpenNext();
}

bool FileSource::Open(const std::string& name) {
    auto file = std::make_unique<File>(name);
    if (file->handle == nullptr) {
        LeaveOut(name + ": " + sf_strerror(nullptr), errors::FileNotFound);
        return false;
    }
    const SF_INFO& info = file->info;
    if (info.channels != 2) {
        LeaveOut(name + ": has " + std::to_string(info.channels) +
                     (info.channels == 1 ? " channel" : " channels") +
                     "; two are needed, left north-south and right east-west",
                 errors::InvalidCall);
        return false;
    }
    if (info.samplerate < Resampler::LeastRate || info.samplerate > Resampler::LargestRate) {
        LeaveOut(name + ": has " + std::to_string(info.samplerate) + " frames a second, which is no sound",
                 errors::InvalidCall);
        return false;
    }
    if (isFirstRound_)
        say_("playing " + name +
             (info.samplerate == RecorderSampleRate
                  ? std::string()
                  : " of " + std::to_string(info.samplerate) + " Hz, resampled"));
    status_.device = name;
    status_.rate = info.samplerate;
    file_ = std::move(file);
    return true;
}

void FileSource::CloseFile() {
    const sf_count_t claimed = file_->info.frames;
    const sf_count_t read = file_->framesRead;
    // Some formats do not know their length when they come through a pipe.
    const bool knowsLength = claimed > 0 && claimed < std::numeric_limits<sf_count_t>::max();
    const bool isShort = knowsLength && read < claimed;
    if (isFirstRound_)
        say_(file_->name + (isShort ? ": is cut off: " : ": has ended: ") + std::to_string(read) +
             (isShort ? " of " + std::to_string(claimed) : std::string()) + " frames");
    file_.reset();
}

/// There is no further file.
void FileSource::RunOut(Moment now) {
    status_.device.clear();
    if (atEnd_ != AtEnd::Wait) {
        status_.state = State::Ended;
        return;
    }
    lookAgainAt_ = now + LookInterval;
    if (status_.state != State::Waiting) say_("waiting for further files");
    status_.state = State::Waiting;
}

void FileSource::LeaveOut(const std::string& problem, int number) {
    lastProblem_ = problem;
    lastProblemNumber_ = number;
    if (leftOut_.size() >= MostToldProblems) leftOut_.clear();
    if (leftOut_.insert(problem).second) say_(problem);
}

}  // namespace veltrix
