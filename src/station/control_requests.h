#pragma once
// How a station is operated from outside: requests that read its controls and do what a user would do on
// them.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"
#include "platform/files.h"

namespace veltrix {

/// Answers requests on the controls of a form, one line each:
///
///   list                                     a line per control: name, kind
///   get NAME                                 what it shows
///   get NAME.PROPERTY                        ForeColor, BackColor, Visible, ToolTipText, Caption, Left, Top
///   set NAME VALUE                           types the whole text, ticks, chooses the entry or the tab
///   click NAME [left|right]                  a click
///   mouse NAME down|move|up|drop X Y [left|right]
///   point NAME X Y                           the pixel's colour value, -1 outside
///   save NAME FILE                           writes what is painted as a BMP file
///   quit                                     closes the form
///
/// Data lines of an answer begin with "= "; the last line is "ok" or "error TEXT".
class ControlRequests {
  public:
    /// `files` takes the pictures that are saved; `quit` is called while the request is answered
    /// and must only ask the loop to end.
    ControlRequests(ControlSet& controls, Files& files, std::function<void()> quit);

    /// Carries out one request and returns the lines of its answer.
    std::vector<std::string> Answer(std::string_view request);

  private:
    using Lines = std::vector<std::string>;
    Lines List() const;
    Lines Get(std::string_view name) const;
    void Enter(std::string_view name, std::string_view value) const;
    void Click(std::string_view name, std::string_view arguments) const;
    void Mouse(std::string_view name, std::string_view arguments) const;
    Lines Point(std::string_view name, std::string_view arguments) const;
    void Save(std::string_view name, std::string_view fileName) const;
    Control& Find(std::string_view name) const;

    ControlSet& controls_;
    Files& files_;
    std::function<void()> quit_;
};

}  // namespace veltrix
