#pragma once
// The command line of a program, option by option.

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace veltrix {

/// A command line that cannot be followed; the text is one clear line.
struct WrongUse {
    std::string text;
};

/// Words and options in their order. An option begins with "--"; its value stands behind "=" or is the next
/// argument. REQUIRES Next() before anything else.
class Arguments {
  public:
    /// The arguments behind the program's name.
    explicit Arguments(std::vector<std::string> arguments) : arguments_(std::move(arguments)) {}

    /// Passes on to the next word or option; false at the end.
    bool Next();
    /// Whether it is an option, else a word.
    bool IsOption() const { return arguments_[at_].starts_with("--"); }
    /// The word, or the option's name with its dashes.
    std::string Name() const;
    /// The option's value. Raises WrongUse when there is none.
    std::string Value();
    /// True when a value stands behind "=".
    bool HasOwnValue() const { return IsOption() && arguments_[at_].find('=') != std::string::npos; }
    /// The option's value as a number. Raises WrongUse when it is none, or outside the limits.
    double Number(double least, double most);
    /// The same for a whole number.
    int Whole(int least, int most);

  private:
    static constexpr std::size_t BeforeFirst = static_cast<std::size_t>(-1);

    std::vector<std::string> arguments_;
    std::size_t at_ = BeforeFirst;
    std::size_t next_ = 0;
};

/// The number that a text is. Raises WrongUse, with `what` in its text, when it is none or outside the
/// limits.
double NumberOf(const std::string& what, const std::string& text, double least, double most);

/// Raises WrongUse for an option that the program does not have.
[[noreturn]] void RefuseOption(const std::string& name);

}  // namespace veltrix
