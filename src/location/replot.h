#pragma once
// ReplotRecentData: the map's dots made anew from the bearings behind them.

#include <functional>

#include "display/lightning_dots.h"
#include "location/map_update.h"

namespace veltrix {

/// What the walk needs beside the rules.
struct ReplotParts {
    Mappers& mappers;
    RecentData& recent;
    LightningDots& dots;
    Clock& clock;
    std::function<void(bool)> skipSamples;  ///< lets the detector count frames, but drop them
    std::function<void()> Timer1_Timer;     ///< drains the recorder's blocks during the walk
};

/// Crosses every stored pair of bearings with the calibration as it now stands and refills the store of dots
/// for the surface `pic`; draws nothing. Neither strength nor time of arrival is tested again: what failed
/// those has left the ring.
void ReplotRecentData(const ReplotParts& parts, const Surface& pic, const FixRules& rules);

}  // namespace veltrix
