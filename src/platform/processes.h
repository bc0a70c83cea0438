#pragma once
// Other programs that the system starts.

#include <string>
#include <string_view>
#include <vector>

namespace veltrix {

/// How a started program shows itself, where a program has a window.
enum class WindowStyle { Hidden, MinimizedNoFocus, Maximized };

/// Starts programs and asks them to close.
class Processes {
  public:
    virtual ~Processes() = default;

    /// Starts `program` with `arguments` in the station's working directory, without waiting for it and never
    /// through a command interpreter. It outlives the station. A name ending in ".exe" is found without it,
    /// too. The search: working directory, the folder of our own program, the search path. Where there is no
    /// program "explorer" or "notepad", these names stand for the desktop's launcher of addresses and files
    /// and for the user's text editor. Raises FileNotFound when there is no such program, PermissionDenied
    /// when it cannot be run. Returns its process number.
    virtual long long Start(std::string_view program, const std::vector<std::string>& arguments,
                            WindowStyle style) = 0;

    /// Asks a program that Start() has just started to close: a wish that it finds when it has done its work,
    /// and that it may answer as it likes. A program that has ended, or was never started, is passed over
    /// without a word.
    virtual void AskToClose(long long process) = 0;
};

}  // namespace veltrix
