#include "recorder/state_file.h"

#include <unistd.h>

#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

#include "recorder/decibel_text.h"

namespace veltrix {

namespace {

constexpr auto WriteInterval = std::chrono::seconds(5);
constexpr std::size_t LongestDevice = 200;

const char* StateText(SourceStatus::State state) {
    switch (state) {
        case SourceStatus::State::Recording:
            return "recording";
        case SourceStatus::State::Waiting:
            return "waiting";
        case SourceStatus::State::Silent:
            return "silent";
        case SourceStatus::State::Ended:
            break;
    }
    return "ended";
}

/// Cards and files have names of others: they must not make lines.
std::string CleanName(std::string name) {
    for (char& c : name)
        if (static_cast<unsigned char>(c) < ' ' || c == 127) c = ' ';
    if (name.size() <= LongestDevice) return name;
    std::size_t end = LongestDevice;
    // Not in the middle of a character of several bytes.
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) --end;
    return name.substr(0, end);
}

std::string StampOf(UtcTime time) {
    return UtcText(time).substr(0, 19) + "Z";
}

std::string PidLine() {
    return "pid=" + std::to_string(::getpid());
}

}  // namespace

StateFile::StateFile(const std::filesystem::path& folder, std::string version, std::function<UtcTime()> utc)
    : name_(folder / "SndInput.state"),
      temporary_(folder / "SndInput.state.tmp"),
      version_(std::move(version)),
      utc_(std::move(utc)) {}

bool StateFile::IsDue(Moment now, const SourceStatus& source) const {
    return !writtenAt_ || now - *writtenAt_ >= WriteInterval || source.state != state_ ||
           source.device != device_;
}

void StateFile::Write(Moment now, const RecorderState& state) {
    const UtcTime utc = utc_();
    if (!writtenAt_ || state.source.state != state_) since_ = utc;
    writtenAt_ = now;
    state_ = state.source.state;
    device_ = state.source.device;

    const SoundLevel& level = state.level;
    const auto& [left, right] = level.channels;
    std::ostringstream text;
    text << "version=" << version_ << '\n'
         << PidLine() << "\nupdated=" << StampOf(utc) << "\nsource=" << state.source.kind
         << "\ndevice=" << CleanName(device_) << "\nstate=" << StateText(state_)
         << "\nsince=" << StampOf(since_) << "\ndevice_rate=" << state.source.rate
         << "\nrate=" << RecorderSampleRate << "\nframes_written=" << state.framesWritten
         << "\nframes_lost=" << state.framesLost << "\nblocks_written=" << state.blocksWritten
         << "\npeak_left_db=" << DecibelText(left.PeakDb())
         << "\npeak_right_db=" << DecibelText(right.PeakDb())
         << "\nrms_left_db=" << DecibelText(left.RmsDb(level.frames))
         << "\nrms_right_db=" << DecibelText(right.RmsDb(level.frames))
         << "\nclipped_frames=" << state.clippedFrames << '\n';
    std::ofstream file(temporary_, std::ios::binary | std::ios::trunc);
    file << text.str();
    file.close();
    std::error_code ignored;
    if (file)
        std::filesystem::rename(temporary_, name_, ignored);
    else
        std::filesystem::remove(temporary_, ignored);
}

void StateFile::End(Moment now, RecorderState state) {
    if (IsAnothers()) return;
    state.source.state = SourceStatus::State::Ended;
    Write(now, state);
}

/// The recorder of another block file in this folder writes the same name.
bool StateFile::IsAnothers() const {
    std::ifstream file(name_, std::ios::binary);
    for (std::string line; std::getline(file, line);)
        if (line.starts_with("pid=")) return line != PidLine();
    return false;
}

}  // namespace veltrix
