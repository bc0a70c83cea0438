#pragma once
// Text as pixels.

#include <cstddef>
#include <string_view>
#include <vector>

namespace veltrix {

/// The pixels of one line of text: a byte each, 1 where the text is, row by row from the top.
struct GlyphMask {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> set;

    /// REQUIRES 0 <= x < width and 0 <= y < height.
    bool IsSet(int x, int y) const {
        return set[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                   static_cast<std::size_t>(x)] != 0;
    }
};

/// Draws text in the one font of the displays, the same on every computer.
class Glyphs {
  public:
    virtual ~Glyphs() = default;
    /// One line of text. Characters that the font does not have show as a box; line ends are left out. The
    /// height is the same for every text.
    virtual GlyphMask Render(std::string_view text) = 0;
};

}  // namespace veltrix
