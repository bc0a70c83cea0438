#pragma once
// What the options of the commands stand for.

#include <string>
#include <utility>

#include "common/arguments.h"
#include "storm/utc_time.h"

namespace veltrix {

/// The arguments of a command, with the forms of values that the commands share.
class StormArguments final : public Arguments {
  public:
    using Arguments::Arguments;

    /// Takes the word as the scenario. Raises WrongUse when `scenario` has been told before.
    void TakeScenario(std::string& scenario) const;
    /// A value as a length in seconds, above 0, at most a week. This and what follows raises WrongUse for a
    /// value that is none.
    double Seconds();
    /// A value as a stamp of universal time.
    UtcTime Stamp();
    /// A value "NAME=FILE", its two parts.
    std::pair<std::string, std::string> NamedFile();
};

}  // namespace veltrix
