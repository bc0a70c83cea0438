#pragma once
// Text as blocks: every character is a full box, which a test can reckon with.

#include "platform/glyphs.h"

namespace veltrix {

struct PlainGlyphs final : Glyphs {
    static constexpr int Width = 6;
    static constexpr int Height = 10;

    GlyphMask Render(std::string_view text) override {
        const int width = Width * static_cast<int>(text.size());
        return {width, Height, std::vector<unsigned char>(text.size() * Width * Height, 1)};
    }
};

}  // namespace veltrix
