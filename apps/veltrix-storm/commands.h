#pragma once
// What the program can do. All raise WrongUse for a wrong command line, Failure for a file that cannot be
// read or written.

#include "arguments.h"

namespace veltrix {

/// Renders what a station hears to a sound file, and the truth about the storm to a table.
void Render(StormArguments arguments);

/// Prints what stations made of a storm, held against the truth.
void JudgeStations(StormArguments arguments);

}  // namespace veltrix
