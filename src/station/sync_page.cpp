#include "station/sync_page.h"

namespace veltrix {

namespace {

constexpr double MoveUnits = 1000;  // form units that a click moves a display
constexpr double FiguresFromLeft = 67;
constexpr int ClickSteps = 3;

}  // namespace

SyncPage::SyncPage(FormControls& controls, const Selection& selection)
    : selection_(selection), cmdLeft(controls.Push("cmdLeft")), cmdRight(controls.Push("cmdRight")) {
    for (int i = 0; i < ClientSockets; ++i) {
        const auto label = [&](std::string_view array) { return &controls.Caption(ElementName(array, i)); };
        displays_[static_cast<std::size_t>(i)] = {&controls.Picture(ElementName("PicSync", i)),
                                                  &controls.Text(ElementName("txtDiffTime", i)),
                                                  label("lblRemoteSampleCountCorrelated"),
                                                  label("lblRemoteSampleCount"),
                                                  label("lblPrevAvgDiffTime"),
                                                  label("lblAvgDiffTime")};
    }
}

void SyncPage::Start() {
    cmdLeft.OnClick = [this](MouseButton) { Move(-MoveUnits); };
    cmdRight.OnClick = [this](MouseButton) { Move(MoveUnits); };
    for (const Display& display : displays_) {
        const auto click = [this, &display](MouseButton) { PicSync_Click(display); };
        display.PicSync->OnClick = click;
        for (Label* const label : {display.lblAvgDiffTime, display.lblPrevAvgDiffTime,
                                   display.lblRemoteSampleCountCorrelated, display.lblRemoteSampleCount})
            label->OnClick = click;
    }
    ShowCurrent();
}

void SyncPage::ShowCurrent() {
    for (const Display& display : displays_) display.PicSync->SetVisible(display.PicSync == &Current());
}

std::vector<SyncPanel> SyncPage::Panels() const {
    std::vector<SyncPanel> panels;
    for (const Display& display : displays_)
        panels.push_back({display.PicSync->surface, *display.lblAvgDiffTime, *display.lblPrevAvgDiffTime,
                          *display.lblRemoteSampleCountCorrelated, *display.lblRemoteSampleCount});
    return panels;
}

/// Steps from opaque or clear figures to none, and back to all.
void SyncPage::PicSync_Click(const Display& display) {
    iClicks_ = (iClicks_ + 1) % ClickSteps;
    for (Control* const figure : display.Figures()) {
        if (iClicks_ == 0)
            figure->SetOpaque(!figure->Opaque());
        else
            figure->SetVisible(iClicks_ == 2);
    }
}

/// Only the display moves; what it shows stays.
void SyncPage::Move(double formUnits) {
    const Display& display = displays_[static_cast<std::size_t>(selection_.ClientIndex)];
    display.PicSync->SetLeft(display.PicSync->Left() + formUnits);
    for (Control* const figure : display.Figures())
        figure->SetLeft(display.PicSync->Left() + FiguresFromLeft);
}

}  // namespace veltrix
