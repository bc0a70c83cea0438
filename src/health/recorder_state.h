#pragma once
// What the recorder says of itself: "SndInput.state", beside the block file.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace veltrix {

/// A recorder's own account. Texts are clean; a figure that is missing or cannot be read is none.
struct RecorderAccount {
    std::string state;   ///< "recording", "waiting", "silent" or "ended"
    std::string since;   ///< UTC stamp of the last change of `state`
    std::string source;  ///< "card", "file" or "storm"
    std::string device;
    std::optional<double> deviceRate;            ///< frames a second
    std::optional<std::uint64_t> framesWritten;  ///< since the recorder's start
    std::optional<std::uint64_t> framesLost;     ///< the same
};

/// Reads lines "key=value". None for a text without a `state` of the four.
std::optional<RecorderAccount> ParseRecorderAccount(std::string_view text);

/// Watches the file. A text that has not changed for StaleSeconds counts as none, as its recorder has gone;
/// so does one that was there at first, until it changes.
class RecorderAccountFile {
  public:
    /// Reads `name` anew at `milliseconds` of a clock that never goes back. A file that is missing, cannot be
    /// read or is longer than MostBytes counts as none.
    std::optional<RecorderAccount> Read(Files& files, std::string_view name, std::int64_t milliseconds);

    /// The age at which an account counts as none.
    static constexpr int StaleSeconds = 30;
    /// The longest account that is read.
    static constexpr std::size_t MostBytes = 16384;

  private:
    std::optional<std::string> text_;      // as it was read last
    std::optional<std::int64_t> changed_;  // when it was first read so
};

}  // namespace veltrix
