#include "station/caption_blocks.h"

#include <utility>

namespace veltrix {

CaptionBlocks::CaptionBlocks(FormControls& controls, Clock& clock, const StationNetwork& network,
                             const LightningDots& dots, std::string sVersion)
    : clock_(clock),
      network_(network),
      dots_(dots),
      sVersion_(std::move(sVersion)),
      Picture1(controls.Picture("Picture1").surface),
      Picture4(controls.Picture("Picture4").surface),
      Picture5(controls.Picture("Picture5").surface),
      Picture8(controls.Picture("Picture8").surface),
      txtAnnouncement(controls.Text("txtAnnouncement")) {}

CaptionFacts CaptionBlocks::Facts() const {
    return {clock_.Now(), sVersion_, network_.server.LocalIP()};
}

void CaptionBlocks::DrawPolar() {
    DrawCaption(Picture1, Facts());
}

void CaptionBlocks::DrawMap() {
    DrawMapCaption(Picture4, Picture8, Facts(), {dots_.Age, txtAnnouncement.Text()});
}

void CaptionBlocks::DrawHistory() {
    DrawDateCaption(Picture5, clock_.Now());
}

}  // namespace veltrix
