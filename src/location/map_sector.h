#pragma once
// MapSector: which remote station gives the best fix where on the map.

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "display/surface.h"
#include "location/mod_calc_globe.h"

namespace veltrix {

/// The sectors of one map. A fix is the better, the nearer both stations and the steeper their bearings
/// cross: its measure of error is the product of both distances divided by the sine of the angle between the
/// directions in which the stations lie. The station with the least error has the pixel.
class MapSector {
  public:
    /// A map of `width` by `height` pixels on which no pixel is anybody's.
    MapSector(int width, int height);

    /// Gives every pixel to one of `stations`, the active ones in the order of the list, at most 255; of
    /// equal ones to the first. Places are those on the bitmap, y upwards; they may lie outside. Calls
    /// `Timer1_Timer` at every tenth column, so that the recorder's blocks do not pile up; stations that it
    /// moves stay where they were until the next call.
    void Find(MapPoint home, std::span<const MapPoint> stations, const std::function<void()>& Timer1_Timer);

    /// The ordinal among the stations, from 1, of the one that has the pixel; 0 where there are none.
    /// REQUIRES a pixel of the map, y upwards.
    std::uint8_t Winner(int x, int y) const;

    /// Adds the dimmed colours of the sectors to a surface of the map's size with its pixels as scale. The
    /// colours are added as plain numbers, so that tinting twice shifts the tint. The lowest row of the map
    /// falls outside, the topmost of the surface stays as it is. Every eighth station has no tint.
    void Tint(Surface& pPic) const;

  private:
    int width_;
    int height_;
    std::vector<std::uint8_t> winners_;  // column by column
};

}  // namespace veltrix
