#pragma once
// The colours of a map while it is painted.

#include <vector>

#include "cartography/coverage.h"
#include "common/bitmap.h"
#include "platform/glyphs.h"

namespace veltrix {

/// A colour whose channels, 0 to 255, need not be whole numbers.
struct Tint {
    float red = 0;
    float green = 0;
    float blue = 0;
};

/// The colour that is a part, 0 to 1, of the way from one to the other.
Tint Mixed(const Tint& from, const Tint& to, float part);

/// A map in the making, black at first.
class Canvas {
  public:
    Canvas() : tints_(static_cast<std::size_t>(MapSize) * MapSize) {}

    /// The colour of a pixel. REQUIRES that it lies on the map.
    Tint& At(int x, int y) { return tints_[static_cast<std::size_t>(y * MapSize + x)]; }

    /// Lays a colour over all that is covered, as opaque as `strength`, 0 to 1.
    void Blend(const Coverage& shape, const Tint& color, float strength);

    /// Draws a text whose upper left corner is at a pixel, on a ground that is darkened around it.
    void Print(const GlyphMask& text, int left, int top, const Tint& color);

    /// The map with its colours rounded to whole numbers.
    Bitmap Finished() const;

  private:
    std::vector<Tint> tints_;
};

}  // namespace veltrix
