#pragma once
// When a recording began, as its file tells.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/date_time.h"

namespace veltrix {

/// A date and time as a file name has it.
struct FileStamp {
    DateTime date = 0;
    bool isUniversal = false;  ///< a "Z" follows: universal time
};

/// The first date and time in the last part of a path: year, month, day, hour, minute and perhaps second,
/// each in full, with at most one of "-", "_", ".", ":", "T" or a blank between two of them, as in
/// "alpha_20260601_200000.flac" or "2026-06-01T20-00-00Z.wav". Nothing when there is none; a date alone is
/// none.
std::optional<FileStamp> StampInName(std::string_view path);

/// The recordings that command line words stand for: a folder for the sound files in it (not in the folders
/// below), in the order of their names, any other word for itself. When all of them have a stamp in their
/// name they are put in its order. Throws BadRecording for a folder that cannot be read or has no sound file.
std::vector<std::string> RecordingsOf(const std::vector<std::string>& words);

}  // namespace veltrix
