#pragma once
// The command line, option by option.

#include <string>
#include <utility>
#include <vector>

#include "storm/utc_time.h"

namespace veltrix {

/// A command line that cannot be followed; the text is one clear line.
struct WrongUse {
    std::string text;
};

/// Words and options in their order. An option's value stands behind "=" or is the next argument.
class Arguments {
  public:
    explicit Arguments(std::vector<std::string> arguments) : arguments_(std::move(arguments)) {}

    /// Passes on to the next word or option; false at the end.
    bool Next();
    bool IsOption() const { return arguments_[at_].starts_with("--"); }
    /// The word, or the option's name with its dashes.
    std::string Name() const;
    /// The option's value. Raises WrongUse when there is none.
    std::string Value();

    /// Takes the word as the scenario. Raises WrongUse when `scenario` has been told before.
    void TakeScenario(std::string& scenario) const;
    /// A value as a length in seconds, above 0, at most a week.
    double Seconds();
    /// A value as a stamp of universal time.
    UtcTime Stamp();
    /// A value "NAME=FILE", its two parts.
    std::pair<std::string, std::string> NamedFile();

  private:
    static constexpr std::size_t BeforeFirst = static_cast<std::size_t>(-1);

    std::vector<std::string> arguments_;
    std::size_t at_ = BeforeFirst;
    std::size_t next_ = 0;
};

[[noreturn]] void RefuseOption(const std::string& name);

}  // namespace veltrix
