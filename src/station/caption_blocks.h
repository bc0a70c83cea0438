#pragma once
// The captions on the large views, with what the station knows of itself.

#include <string>

#include "display/captions.h"
#include "display/lightning_dots.h"
#include "platform/clock.h"
#include "station/form_controls.h"
#include "station/station_network.h"

namespace veltrix {

/// Owned by the form.
class CaptionBlocks {
  public:
    /// `sVersion` is major, minor and revision, such as "1.2.3".
    CaptionBlocks(FormControls& controls, Clock& clock, const StationNetwork& network,
                  const LightningDots& dots, std::string sVersion);

    /// Each draws the block of one display: the polar display, the map with its clean copy, the history plot.
    void DrawPolar();
    void DrawMap();
    void DrawHistory();

  private:
    CaptionFacts Facts() const;

    Clock& clock_;
    const StationNetwork& network_;
    const LightningDots& dots_;
    std::string sVersion_;
    Surface& Picture1;
    Surface& Picture4;
    Surface& Picture5;
    Surface& Picture8;
    TextBox& txtAnnouncement;
};

}  // namespace veltrix
