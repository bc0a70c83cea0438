#pragma once
// Where places of the Earth lie on a map.

#include <functional>

#include "cartography/map_limits.h"

namespace veltrix {

/// A point of a map in pixels from its upper left corner, y downwards. The middle of a pixel is at whole
/// numbers, since a strike is painted at the rounded numbers.
struct MapPixel {
    double x = 0;
    double y = 0;
};

/// The projection by which strikes come onto the map, CalcMapXY, continued beyond the quarter of the Earth
/// that it reaches. REQUIRES a place that PaintMap can paint.
class MapProjection {
  public:
    explicit MapProjection(const MapPlace& place);

    /// The place that the map is of.
    const MapPlace& Place() const { return place_; }

    /// Where a place lies, on the map or outside of it; degrees. Within a quarter of the circumference it is
    /// CalcMapXY to the bit, but for the centre's own meridian, whose south CalcMapXY turns to the north;
    /// beyond, distance and direction on a sphere. Without a meaning at the poles and at the place opposite
    /// to the centre.
    MapPixel At(double longitude, double latitude) const;

    /// True for all places on the map and those around it, by 150 km at least, but none near the place
    /// opposite to the centre.
    bool IsNear(double longitude, double latitude) const;

    /// The greatest distance from the centre at which a place IsNear, degrees of arc.
    double Reach() const { return reach_; }

    /// The place at a distance, in degrees of arc, and a bearing from the centre on a sphere.
    GeoPoint Around(double distance, double bearing) const;

  private:
    MapPlace place_;
    double reach_;
    double sinLatitude_;
    double cosLatitude_;
    double leastCosine_;  // of the distance
};

/// Follows a line of places over the map and hands on the straight pieces that it becomes there, so fine
/// that the curves of the projection are kept. What is not near the map is left out.
class MapPath {
  public:
    /// Takes a straight piece: its two ends.
    using Piece = std::function<void(MapPixel, MapPixel)>;

    MapPath(const MapProjection& projection, Piece piece)
        : projection_(projection), piece_(std::move(piece)) {}

    /// Begins a new line.
    void MoveTo(double longitude, double latitude);
    /// Goes on to a place, straight in longitude and latitude. REQUIRES MoveTo before.
    void LineTo(double longitude, double latitude);

  private:
    struct Stop {
        double longitude = 0;
        double latitude = 0;
        bool isNear = false;
        MapPixel pixel;
    };
    Stop StopAt(double longitude, double latitude) const;
    void Draw(const Stop& from, const Stop& to);

    const MapProjection& projection_;
    Piece piece_;
    Stop last_;
};

}  // namespace veltrix
