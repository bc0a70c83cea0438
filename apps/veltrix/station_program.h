#pragma once
// One station from its start to its end.

#include "command_line.h"
#include "station/recorder_start.h"

namespace veltrix {

/// Exit codes of the program (sysexits.h).
inline constexpr int ExitUsage = 64;         ///< a wrong command line
inline constexpr int ExitCannotCreate = 73;  ///< a folder or socket that cannot be made

/// One line of warning on standard error.
void Warn(const std::string& line);

/// The recorder that the command line names. Throws WrongCommandLine.
RecorderChoice RecorderOf(const std::string& text);

/// Builds a station, runs it until it is asked to end, and returns the program's exit code. With a window
/// where `line.headless` is off. REQUIRES an application object: a QApplication for a window, else a
/// QGuiApplication.
int RunStation(const CommandLine& line, const RecorderChoice& recorder);

}  // namespace veltrix
