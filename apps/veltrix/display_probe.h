#pragma once
// Whether there is a display that a window can be opened on.

namespace veltrix {

/// What the program finds where it is to open its window.
enum class DisplayState {
    None,    ///< no variable of the environment names one
    Closed,  ///< one is named, but cannot be opened: it has gone, refuses us, or its part of Qt is not
             ///< installed
    Open
};

/// Tries it in a process of its own, since Qt ends the program where a display cannot be opened; one that
/// gives no answer for ten seconds counts as closed. `program` is the program's name. REQUIRES that there is
/// no application object and no thread yet.
DisplayState ProbeDisplay(char* program);

}  // namespace veltrix
