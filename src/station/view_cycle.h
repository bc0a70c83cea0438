#pragma once
// The three large views, of which one is seen at a time.

#include <functional>

#include "station/form_controls.h"

namespace veltrix {

/// Lets a left click pass from the polar display to the map, to the history plot and back. A right click on
/// the first two opens their dialog. Owned by the form.
class ViewCycle {
  public:
    ViewCycle(FormControls& controls, std::function<void()> openFrame3, std::function<void()> openFrame2);

    /// Binds the views and shows the polar display.
    void Start();

    /// A click on either tab strip of the calibration. May be empty.
    std::function<void()> OnCalibrationTab;
    /// Whatever the mouse does on the map. May be empty.
    std::function<void(const MouseEvent&)> OnMapMouse;

    /// True while the calibration by drag and drop is active: the map then keeps the clicks.
    bool IsCalibrating() const;

  private:
    void BindDialog(PictureBox& view, bool& bRightDown, std::function<void()> open,
                    std::function<void()> pass);
    void Pass(PictureBox& hidden, PictureBox& shown);

    PictureBox& Picture1;
    PictureBox& Picture4;
    PictureBox& Picture5;
    TabStrip& SSTab3;
    TabStrip& SSTab4;
    Label& lblCalibrationMode;  // says on the map why it keeps the clicks
    std::function<void()> openFrame3_;
    std::function<void()> openFrame2_;
    bool bRightDown1 = false;  // the right button went down on Picture1; the next click opens its dialog
    bool bRightDown4 = false;  // the same of Picture4
};

}  // namespace veltrix
