#pragma once
// What the user does about the polar display: its background, and clearing it.

#include <functional>

#include "display/polar_display.h"
#include "station/background_dialog.h"

namespace veltrix {

/// The polar display with its background and its dialog Frame3. Owned by the form.
class PolarView {
  public:
    /// `clearCount` sets lTriggerCount to 0.
    PolarView(FormControls& controls, Platform& platform, PolarDisplay& display, ErrorReporter& errors,
              std::function<void()> clearCount);

    /// Lays the built-in background and binds the commands of the dialog.
    void Start();

    /// Rebuilds the background from the chosen file, where there is one, and repaints the trail over it.
    /// Raises what Pictures raises for a file that cannot be read; everything is as it was then.
    void GyrelLoadBackground();

    /// Opens the dialog.
    void OpenFrame3() { dialog_.Open(); }

  private:
    PictureBox& Picture1;
    Pictures& pictures_;
    PolarDisplay& display_;
    BackgroundDialog dialog_;
    std::function<void()> clearCount_;
};

}  // namespace veltrix
