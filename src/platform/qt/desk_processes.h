#pragma once
// Programs of the computer we run on.

#include <QObject>
#include <chrono>

#include "platform/processes.h"

namespace veltrix {

/// Runs the programs without a shell between. One for each working directory.
class DeskProcesses final : public Processes {
  public:
    /// Programs start in `workingDirectory`; `ownFolder` is where our own program lies.
    DeskProcesses(std::string workingDirectory, std::string ownFolder)
        : workingDirectory_(std::move(workingDirectory)), ownFolder_(std::move(ownFolder)) {}

    /// Standard input, output and error of the program lead nowhere. A name with a separator is looked up
    /// from the working directory alone. A script ending in ".bat" or ".cmd" is run by the shell. The window
    /// style is a wish that desktops here do not take from outside. For "explorer" xdg-open stands in; for
    /// "notepad" the command in $VISUAL, a program with or without arguments of its own, and where there is
    /// no such program, xdg-open.
    long long Start(std::string_view program, const std::vector<std::string>& arguments,
                    WindowStyle style) override;

    /// Sends the termination signal, as no key stroke can be sent to a program here: once ReadyAfter has
    /// passed on the event loop, since a signal, unlike a key stroke, does not wait until the program reads
    /// it, and would end most programs before they have done anything. What still waits when this object ends
    /// is asked then.
    void AskToClose(long long process) override;

    /// The time that a program is given to get ready for the signal.
    static constexpr std::chrono::seconds ReadyAfter{2};

  private:
    QObject requests_;  // parent of what still waits
    std::string workingDirectory_;
    std::string ownFolder_;
};

}  // namespace veltrix
