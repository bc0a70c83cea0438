#include "station/view_cycle.h"

#include <utility>

namespace veltrix {

namespace {

constexpr int CalibrationTab = 1;  // of SSTab3
constexpr int LocalTab = 0;        // of SSTab4
constexpr int DragTab = 2;         // of SSTab4; there is nothing to drag while the map is hidden

}  // namespace

ViewCycle::ViewCycle(FormControls& controls, std::function<void()> openFrame3,
                     std::function<void()> openFrame2)
    : Picture1(controls.Picture("Picture1")),
      Picture4(controls.Picture("Picture4")),
      Picture5(controls.Picture("Picture5")),
      SSTab3(controls.Tabs("SSTab3")),
      SSTab4(controls.Tabs("SSTab4")),
      lblCalibrationMode(controls.Caption("lblCalibrationMode")),
      openFrame3_(std::move(openFrame3)),
      openFrame2_(std::move(openFrame2)) {}

void ViewCycle::Start() {
    Picture1.SetVisible(true);
    Picture4.SetVisible(false);
    Picture5.SetVisible(false);
    BindDialog(Picture1, bRightDown1, openFrame3_, [this] { Pass(Picture1, Picture4); });
    BindDialog(Picture4, bRightDown4, openFrame2_, [this] {
        if (!IsCalibrating()) Pass(Picture4, Picture5);
    });
    Picture4.OnMouse = [this, onRight = Picture4.OnMouse](const MouseEvent& event) {
        onRight(event);
        if (OnMapMouse) OnMapMouse(event);
    };
    SSTab3.OnClick = [this](MouseButton) {
        lblCalibrationMode.SetVisible(IsCalibrating());
        if (OnCalibrationTab) OnCalibrationTab();
    };
    SSTab4.OnClick = [this](MouseButton) {
        if (OnCalibrationTab) OnCalibrationTab();
    };
    Picture5.OnClick = [this](MouseButton button) {
        if (button == MouseButton::Left && Picture5.Visible()) Pass(Picture5, Picture1);
    };
}

bool ViewCycle::IsCalibrating() const {
    return SSTab3.Tab() == CalibrationTab;
}

void ViewCycle::BindDialog(PictureBox& view, bool& bRightDown, std::function<void()> open,
                           std::function<void()> pass) {
    view.OnMouse = [&bRightDown](const MouseEvent& event) {
        if (event.action == MouseAction::Down && event.button == MouseButton::Right) bRightDown = true;
    };
    view.OnClick = [&view, &bRightDown, open = std::move(open), pass = std::move(pass)](MouseButton button) {
        const bool opens = std::exchange(bRightDown, false);
        if (!view.Visible()) return;
        if (opens)
            open();
        else if (button == MouseButton::Left)
            pass();
    };
}

void ViewCycle::Pass(PictureBox& hidden, PictureBox& shown) {
    hidden.SetVisible(false);
    shown.SetVisible(true);
    if (!Picture4.Visible() && SSTab4.Tab() == DragTab) SSTab4.SetTab(LocalTab);
}

}  // namespace veltrix
