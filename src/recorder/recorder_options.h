#pragma once
// The recorder's command line.

#include <cstddef>
#include <string>
#include <vector>

namespace veltrix {

/// What the command line asks for.
struct RecorderOptions {
    enum class Task { Record, Stop, List, Level, Help, Version };

    Task task = Task::Record;
    double seconds = 0;                   ///< that the level is shown; 0: until told to end
    double gain = 1;                      ///< linear
    std::size_t maxBytes = 128 * 1024;    ///< largest block
    std::string blockFile = "audio.dat";  ///< with "/" as separator
};

/// A wrong command line or setting: one clear line.
struct WrongRecorderOption {
    std::string text;
};

/// Reads the arguments behind the program's name. Names of options are compared without regard to case. A
/// path with blanks may come in several arguments: those behind /of= that are no options belong to it. Throws
/// WrongRecorderOption.
RecorderOptions ReadRecorderOptions(const std::vector<std::string>& arguments);

/// The text that `--help` prints.
std::string RecorderHelp();

}  // namespace veltrix
