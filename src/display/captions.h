#pragma once
// The captions of the three large views: when and where a picture was taken, the legend of the map's colours,
// and the announcement of the station.

#include <cstdint>
#include <string>

#include "common/date_time.h"
#include "display/surface.h"

namespace veltrix {

/// What every caption block tells.
struct CaptionFacts {
    DateTime now = 0;
    std::string sVersion;  ///< such as "1.2.3"
    std::string sLocalIP;  ///< of this station; empty while there is none
};

/// What the map's caption tells besides.
struct MapFacts {
    std::int32_t Age = 0;  ///< how long a dot is visible, in minutes
    std::string sAnnouncement;
};

/// Draws the caption block of the polar display into the upper left corner: date and time on dark red, below
/// them version and address on what is there. REQUIRES pixels as scale, here and of DrawMapCaption().
void DrawCaption(Surface& surface, const CaptionFacts& facts);

/// Draws the same block on the map, the legend of the dots' colours below it, and the announcement to the
/// right of it, cut at the right edge. `background` is the clean map under `surface`, and gives back what lay
/// under the announcement before.
void DrawMapCaption(Surface& surface, const Surface& background, const CaptionFacts& facts,
                    const MapFacts& map);

/// Draws the caption block of the history plot: the date on dark red. The fore colour stays white. REQUIRES
/// the plot's scale of 24 hours by 180 degrees.
void DrawDateCaption(Surface& surface, DateTime now);

}  // namespace veltrix
