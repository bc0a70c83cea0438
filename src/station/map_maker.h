#pragma once
// Makes maps from the coastlines that the program brings with it.

#include <memory>
#include <string>

#include "cartography/coastlines.h"
#include "cartography/map_limits.h"
#include "platform/platform.h"

namespace veltrix {

/// Owned by the map view.
class MapMaker {
  public:
    explicit MapMaker(Platform& platform) : platform_(platform) {}

    /// The map that is shown while no other is chosen. Raises what reading the coastlines raises.
    const Bitmap& BuiltInMap();
    /// Writes the built-in map as the file that rows of the station list name at first, unless that exists.
    void WriteDefaultMap();
    /// Paints and writes a map of a place under a name. Raises what PaintMap and WriteMap raise.
    void Make(const MapPlace& place, const std::string& name);

  private:
    const Coastlines& TheCoastlines();

    Platform& platform_;
    std::unique_ptr<Coastlines> coastlines_;  // once they are needed
    Bitmap builtIn_;
};

}  // namespace veltrix
