#pragma once
// What the user does about the map's background.

#include "station/background_dialog.h"

namespace veltrix {

/// The map with its background and its dialog Frame2. Owned by the form.
class MapView {
  public:
    MapView(FormControls& controls, Platform& platform, ErrorReporter& errors);

    /// Binds the commands of the dialog.
    void Start();

    /// Loads the map, where one is chosen, and keeps a clean copy of it. Raises what Pictures raises for a
    /// file that cannot be read; everything is as it was then.
    void MapInit();

    void OpenFrame2() { dialog_.Open(); }

  private:
    PictureBox& Picture4;
    PictureBox& Picture8;
    Button& cmdReset;
    Pictures& pictures_;
    BackgroundDialog dialog_;
};

}  // namespace veltrix
