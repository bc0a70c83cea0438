#pragma once
// Maps for the display of strikes, painted from coastlines.

#include "cartography/coastlines.h"
#include "cartography/map_limits.h"
#include "common/bitmap.h"
#include "platform/glyphs.h"

namespace veltrix {

/// A map of MapSize by MapSize pixels: land and sea, coasts, borders, degrees and rings of equal distance.
/// It is dark, so that strikes stand out that are painted as the brighter of both colours, channel by
/// channel, and old ones fade into it. Every place lies where CalcMapXY puts it. Takes some 100 ms. Raises
/// InvalidCall for a place outside the limits of map_limits.h.
Bitmap PaintMap(const MapPlace& place, const Coastlines& coastlines, Glyphs& glyphs);

}  // namespace veltrix
