#pragma once
// The command line of the station program.

#include <string>
#include <vector>

namespace veltrix {

/// What the user asked for.
struct CommandLine {
    bool headless = false;
    std::string directory;  ///< working directory of the station; empty: the present one
    std::string settings;   ///< settings file; empty: the per-user store
    std::string address = "0.0.0.0";
    std::string recorder = "SndInput.exe";  ///< "none" or a command
    std::string control;                    ///< path of the control socket; empty: none
    enum class Print { Nothing, Fixes, Detections } print = Print::Fixes;
    bool version = false;
    bool help = false;
};

/// A wrong command line: one clear line.
struct WrongCommandLine {
    std::string text;
};

/// Reads the arguments behind the program's name; `--option VALUE` and `--option=VALUE` are the same. Throws
/// WrongCommandLine.
CommandLine ReadCommandLine(const std::vector<std::string>& arguments);

/// The text that `--help` prints.
std::string HelpText();

}  // namespace veltrix
