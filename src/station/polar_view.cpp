#include "station/polar_view.h"

#include <utility>

namespace veltrix {

PolarView::PolarView(FormControls& controls, Platform& platform, PolarDisplay& display, ErrorReporter& errors,
                     std::function<void()> clearCount)
    : Picture1(controls.Picture("Picture1")),
      pictures_(platform.pictures),
      display_(display),
      dialog_(controls, platform, errors,
              {"Frame3", "File2", "txtMapFilename2", "cmdClearPicture1", "cmdCancel2", "MapFilenamePicture1",
               true}),
      clearCount_(std::move(clearCount)) {}

void PolarView::Start() {
    dialog_.Start([this] { GyrelLoadBackground(); },
                  [this] {
                      display_.ClearGyrelHistory();
                      clearCount_();
                      GyrelLoadBackground();
                  });
    Picture1.surface.SetPicture(pictures_.BuiltIn(BuiltInPicture::PolarBackground));
    display_.RenewBackground();
}

void PolarView::GyrelLoadBackground() {
    const std::string file = dialog_.PresentFile();
    if (file.empty())
        Picture1.surface.Cls();
    else
        Picture1.surface.SetPicture(pictures_.Load(file));
    display_.RenewBackground();
}

}  // namespace veltrix
