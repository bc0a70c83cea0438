#pragma once
// Smooth shapes: how much of each pixel of a map lies in them.

#include <cstddef>
#include <vector>

#include "cartography/map_projection.h"

namespace veltrix {

/// A part from 0 to 1 for each pixel, row by row from the top.
class Coverage {
  public:
    Coverage() : parts_(static_cast<std::size_t>(MapSize) * MapSize) {}

    /// The part of one pixel. REQUIRES that it lies on the map.
    float At(int x, int y) const { return parts_[Index(x, y)]; }
    float& At(int x, int y) { return parts_[Index(x, y)]; }

    /// Adds a straight line of a width in pixels. Where lines meet or cross they do not add up.
    void Stroke(MapPixel from, MapPixel to, double width);
    /// Adds the outline of a circle.
    void Circle(MapPixel centre, double radius, double width);

    /// The same without any detail smaller than some `radius` pixels; the edges count as going on outside.
    Coverage Blurred(int radius) const;
    void Invert();

  private:
    static std::size_t Index(int x, int y) {
        return static_cast<std::size_t>(y) * MapSize + static_cast<std::size_t>(x);
    }

    std::vector<float> parts_;
};

/// Fills what closed outlines surround, by the even-odd rule. Only what outlines do on the map itself counts,
/// so they may be left out elsewhere. Which of the two sides is the inside is up to the caller to find out:
/// the upper left corner is taken as outside.
class AreaFill {
  public:
    AreaFill();

    /// A piece of an outline. Pieces that follow each other share their ends to the bit.
    void Add(MapPixel from, MapPixel to);

    /// What the outlines surround; at its edges the part of each pixel that it covers.
    Coverage Fill() const;

  private:
    std::vector<std::vector<float>> crossings_;  // for each scan line, from the left edge of the map
    std::vector<unsigned char> leftEdge_;        // 1 where the left edge changes sides, a scan line each
};

}  // namespace veltrix
