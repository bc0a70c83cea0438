#pragma once
// What the program can do. All raise WrongUse for a wrong command line, BadRecording for a recording that
// cannot be used, std::system_error for a file that cannot be written. Each returns the exit code.

#include "replay_options.h"

namespace veltrix {

/// Prints the strike log of a station's recordings.
int Replay(Arguments arguments);

/// Prints the strikes that two stations' recordings locate.
int ReplayPair(Arguments arguments);

}  // namespace veltrix
