#pragma once
// The splash form and the "About" tab.

#include <memory>
#include <string>

#include "platform/error_convention.h"
#include "platform/platform.h"
#include "station/form_controls.h"

namespace veltrix {

/// Shows who we are. Owned by the form.
class About {
  public:
    /// `releaseNotes` is what Command1 writes to "ReleaseNotes.txt" and opens.
    About(FormControls& controls, Platform& platform, ErrorReporter& errors, std::string strVersion,
          std::string releaseNotes);

    /// Fills the tab and binds its commands.
    void Start();

    /// Shows the splash form for some seconds, or until it is clicked.
    void ShowSplash();

  private:
    void HideSplash();
    void OpenReleaseNotes();

    FormControls& controls_;
    Platform& platform_;
    ErrorReporter& errors_;
    std::string strVersion_;
    std::string releaseNotes_;
    std::unique_ptr<Timer> splashEnd_;
};

}  // namespace veltrix
