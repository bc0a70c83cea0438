#include "cartography/canvas.h"

#include <algorithm>

#include "common/arithmetic.h"

namespace veltrix {

namespace {

bool IsOnMap(int x, int y) {
    return x >= 0 && y >= 0 && x < MapSize && y < MapSize;
}

}  // namespace

Tint Mixed(const Tint& from, const Tint& to, float part) {
    return {from.red + (to.red - from.red) * part, from.green + (to.green - from.green) * part,
            from.blue + (to.blue - from.blue) * part};
}

void Canvas::Blend(const Coverage& shape, const Tint& color, float strength) {
    for (int y = 0; y < MapSize; ++y)
        for (int x = 0; x < MapSize; ++x)
            if (shape.At(x, y) > 0) At(x, y) = Mixed(At(x, y), color, shape.At(x, y) * strength);
}

void Canvas::Print(const GlyphMask& text, int left, int top, const Tint& color) {
    constexpr int Halo = 1;
    constexpr float HaloStrength = 0.75F;
    constexpr Tint Ground{4, 8, 14};
    const auto isNearText = [&](int x, int y) {
        for (int row = std::max(y - Halo, 0); row <= std::min(y + Halo, text.height - 1); ++row)
            for (int column = std::max(x - Halo, 0); column <= std::min(x + Halo, text.width - 1); ++column)
                if (text.IsSet(column, row)) return true;
        return false;
    };
    for (int y = -Halo; y < text.height + Halo; ++y) {
        for (int x = -Halo; x < text.width + Halo; ++x) {
            if (!IsOnMap(left + x, top + y) || !isNearText(x, y)) continue;
            Tint& pixel = At(left + x, top + y);
            const bool isText = x >= 0 && y >= 0 && x < text.width && y < text.height && text.IsSet(x, y);
            pixel = isText ? color : Mixed(pixel, Ground, HaloStrength);
        }
    }
}

Bitmap Canvas::Finished() const {
    Bitmap bitmap{MapSize, MapSize, {}};
    bitmap.pixels.reserve(tints_.size());
    const auto channel = [](float value) {
        return static_cast<int>(RoundToLong(std::clamp(value, 0.0F, 255.0F)));
    };
    for (const Tint& tint : tints_)
        bitmap.pixels.push_back(Rgb(channel(tint.red), channel(tint.green), channel(tint.blue)));
    return bitmap;
}

}  // namespace veltrix
