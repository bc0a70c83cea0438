#include "station/map_view.h"

namespace veltrix {

namespace {

constexpr std::size_t LongestNoName = 3;  // characters; a name that short is no file with an ending

}  // namespace

MapView::MapView(FormControls& controls, Platform& platform, ErrorReporter& errors)
    : Picture4(controls.Picture("Picture4")),
      Picture8(controls.Picture("Picture8")),
      cmdReset(controls.Push("cmdReset")),
      pictures_(platform.pictures),
      dialog_(controls, platform, errors,
              {"Frame2", "File3", "txtMapFilename", "cmdClearPicture4", "cmdCancel", "MapFilenamePicture4"}) {
}

void MapView::Start() {
    dialog_.Start([this] { MapInit(); },
                  [this] {
                      Picture4.surface.Cls();
                      MapInit();
                  });
    cmdReset.OnClick = [this](MouseButton) { dialog_.Choose("", "cmdReset_Click"); };
}

void MapView::MapInit() {
    const std::string file = dialog_.PresentFile();
    if (file.size() > LongestNoName) Picture4.surface.SetPicture(pictures_.Load(file));
    Picture8.surface.SetPicture(Picture4.surface.Image());
}

}  // namespace veltrix
