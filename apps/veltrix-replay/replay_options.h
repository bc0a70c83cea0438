#pragma once
// The options that both ways of replaying share.

#include "archive/station_replay.h"
#include "common/arguments.h"

namespace veltrix {

/// Takes an option that says how a station's recordings are to be heard; false when it is none of those.
/// Raises WrongUse.
bool TakeReplayOption(Arguments& arguments, ReplayRules& rules);

/// As many threads as this computer runs at a time, 1 to 16.
unsigned UsualThreads();

}  // namespace veltrix
