#pragma once
// Pixels at rest: what a picture file holds and what a surface is a snapshot of.

#include <cstddef>
#include <vector>

#include "common/colour.h"

namespace veltrix {

/// Rows of pixels from the top, each pixel a colour value from 0 to 0xFFFFFF. REQUIRES width x height pixels.
struct Bitmap {
    int width = 0;
    int height = 0;
    std::vector<ColourValue> pixels;

    bool operator==(const Bitmap&) const = default;
};

}  // namespace veltrix
