#pragma once
// What the recorder tells a station about itself, beside the block file.

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "common/sound_level.h"
#include "recorder/sample_source.h"
#include "storm/utc_time.h"

namespace veltrix {

/// What stands in the state file besides the times.
struct RecorderState {
    SourceStatus source;
    std::uint64_t framesWritten = 0;  ///< since the recorder's start, like all counts
    std::uint64_t framesLost = 0;     ///< of the source and by a late station
    std::uint64_t blocksWritten = 0;
    std::uint64_t clippedFrames = 0;
    SoundLevel level;  ///< of the last seconds
};

/// Keeps "SndInput.state" up to date: written anew when the source's state changes and every 5 s, to another
/// name that is then renamed, so that no reader finds half a file. What cannot be written is tried again at
/// the next time; the block file's trouble tells of the same disk.
class StateFile {
  public:
    /// `folder`: of the block file. `version`: the recorder's. `utc`: tells universal time.
    StateFile(const std::filesystem::path& folder, std::string version, std::function<UtcTime()> utc);

    /// True when the file is to be written at `now`: its time has come, or the source's state is another one.
    bool IsDue(Moment now, const SourceStatus& source) const;
    void Write(Moment now, const RecorderState& state);
    /// Says that the recorder has ended; not when the file is meanwhile another recorder's.
    void End(Moment now, RecorderState state);

  private:
    bool IsAnothers() const;

    std::filesystem::path name_;
    std::filesystem::path temporary_;
    std::string version_;
    std::function<UtcTime()> utc_;
    SourceStatus::State state_ = SourceStatus::State::Recording;
    std::string device_;
    UtcTime since_ = 0;
    std::optional<Moment> writtenAt_;
};

}  // namespace veltrix
