#pragma once
// Programs of the computer we run on.

#include "platform/processes.h"

namespace veltrix {

class DeskProcesses final : public Processes {
  public:
    /// Programs start in `workingDirectory`; `ownFolder` is where our own program lies.
    DeskProcesses(std::string workingDirectory, std::string ownFolder)
        : workingDirectory_(std::move(workingDirectory)), ownFolder_(std::move(ownFolder)) {}

    /// Standard input, output and error of the program lead nowhere. A name with a separator is looked up
    /// from the working directory alone. A script ending in ".bat" or ".cmd" is run by the shell. The window
    /// style is a wish that desktops here do not take from outside. For "explorer" xdg-open stands in; for
    /// "notepad" the program that $VISUAL names, and where there is none, xdg-open.
    long long Start(std::string_view program, const std::vector<std::string>& arguments,
                    WindowStyle style) override;

  private:
    std::string workingDirectory_;
    std::string ownFolder_;
};

}  // namespace veltrix
