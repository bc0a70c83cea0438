#pragma once
// One station from its start to its end.

#include "command_line.h"
#include "platform/qt/console_lines.h"
#include "station/recorder_start.h"

namespace veltrix {

/// Exit codes of the program (sysexits.h).
inline constexpr int ExitUsage = 64;         ///< a wrong command line
inline constexpr int ExitCannotCreate = 73;  ///< a folder or socket that cannot be made

/// One line of warning in the program's name.
void Warn(ConsoleLines& console, const std::string& line);

/// The recorder that the command line names. Throws WrongCommandLine.
RecorderChoice RecorderOf(const std::string& text);

/// Builds a station, runs it until it is asked to end, and returns the program's exit code. With a window
/// where `line.headless` is off. REQUIRES an application object: a QApplication for a window, else a
/// QGuiApplication. Warnings, and errors where there is no window, go to `console`.
int RunStation(const CommandLine& line, const RecorderChoice& recorder, ConsoleLines& console);

}  // namespace veltrix
