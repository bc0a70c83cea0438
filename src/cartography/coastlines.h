#pragma once
// The coasts and borders of the Earth, as resources/coastlines/README.md tells.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace veltrix {

/// A place in hundredths of a degree: longitude -18000 to 18000, latitude -9000 to 9000.
struct GridPoint {
    std::int16_t lon = 0;
    std::int16_t lat = 0;
    bool operator==(const GridPoint&) const = default;
};

/// Straight in longitude and latitude between its points, of which it has two at least.
using GridLine = std::vector<GridPoint>;

/// Every coast is closed on the globe, though it may be cut into several lines, so that each parts land from
/// sea. No line crosses the meridian of 180 degrees; those of both sides meet on it.
class Coastlines {
  public:
    /// Reads the decompressed bytes. Raises Internal when they are damaged.
    explicit Coastlines(std::span<const std::byte> data);

    /// The lines between land and sea, and those between countries.
    const std::vector<GridLine>& Coasts() const { return coasts_; }
    const std::vector<GridLine>& Borders() const { return borders_; }

    /// Whether a place, in degrees, lies on land: whether the way along its meridian to the north pole, which
    /// is sea, crosses an odd number of coasts. Takes some 100 microseconds. Any longitude; on a coast
    /// either.
    bool IsLand(double longitude, double latitude) const;

  private:
    std::vector<GridLine> coasts_;
    std::vector<GridLine> borders_;
};

}  // namespace veltrix
