#include "display/surface.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace veltrix {

namespace {

constexpr double Far = 1e6;         // pixels; whatever lies beyond is outside every surface
constexpr int LongestLine = 20000;  // pixels

/// The pixel that a distance from the edge lies in: its integer part. What lies far outside, or is no number,
/// is kept outside.
int PixelAt(double distance) {
    if (!(distance > -Far && distance < Far))
        return distance > 0 ? static_cast<int>(Far) : -static_cast<int>(Far);
    const int whole = static_cast<int>(distance);
    return distance < whole ? whole - 1 : whole;
}

int NearestPixel(double distance) {
    return PixelAt(distance + 0.5);
}

}  // namespace

Surface::Surface(int width, int height, Glyphs& glyphs, const SurfaceScale& scale)
    : glyphs_(glyphs), scale_(scale) {
    image_.width = width;
    image_.height = height;
    image_.pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), BackColor);
}

Surface::Pixel Surface::PixelOf(double x, double y) const {
    return {PixelAt(AcrossPixels(x)), PixelAt(DownPixels(y))};
}

void Surface::TellPainted() {
    shown_ = false;
    if (OnPainted) OnPainted();
}

void Surface::PSet(double x, double y, ColourValue color) {
    text_ = PixelOf(x, y);
    Paint(text_, color);
    Painted();
}

ColourValue Surface::Point(double x, double y) const {
    const Pixel at = PixelOf(x, y);
    return Holds(at) ? image_.pixels[PlaceOf(at)] : -1;
}

void Surface::Line(double x1, double y1, double x2, double y2, ColourValue color) {
    Pixel at = PixelOf(x1, y1);
    const Pixel to = PixelOf(x2, y2);
    const int dx = std::abs(to.x - at.x);
    const int dy = std::abs(to.y - at.y);
    const int steps = std::max(dx, dy);
    if (steps > LongestLine) return;
    const int signX = to.x < at.x ? -1 : 1;
    const int signY = to.y < at.y ? -1 : 1;
    // Bresenham's way: a whole pixel along the longer side with each step, one across when it is due.
    int dueX = steps / 2;
    int dueY = steps / 2;
    for (int i = 0; i <= steps; ++i) {
        Paint(at, color);
        dueX -= dx;
        dueY -= dy;
        if (dueX < 0) {
            at.x += signX;
            dueX += steps;
        }
        if (dueY < 0) {
            at.y += signY;
            dueY += steps;
        }
    }
    Painted();
}

void Surface::Circle(double x, double y, double radius, ColourValue color) {
    const double centreX = AcrossPixels(x);
    const double centreY = DownPixels(y);
    const double r = std::abs(radius * image_.width / scale_.width);
    if (!(r < LongestLine && std::abs(centreX) < LongestLine && std::abs(centreY) < LongestLine)) return;
    // One pixel in each column of the flat arcs and in each row of the steep ones.
    const double reach = r * std::sqrt(0.5);
    const auto walk = [&](double middle, auto&& paint) {
        for (double along = std::ceil(middle - reach); along <= middle + reach; ++along) {
            const double across = std::sqrt(std::max(r * r - (along - middle) * (along - middle), 0.0));
            paint(static_cast<int>(along), -across);
            paint(static_cast<int>(along), across);
        }
    };
    walk(centreX, [&](int column, double across) { Paint({column, NearestPixel(centreY + across)}, color); });
    walk(centreY, [&](int row, double across) { Paint({NearestPixel(centreX + across), row}, color); });
    Painted();
}

void Surface::Cls() {
    std::ranges::fill(image_.pixels, BackColor);
    const int width = std::min(picture_.width, image_.width);
    for (int y = 0; y < std::min(picture_.height, image_.height); ++y)
        std::copy_n(picture_.pixels.begin() + static_cast<std::ptrdiff_t>(y) * picture_.width, width,
                    image_.pixels.begin() + static_cast<std::ptrdiff_t>(y) * image_.width);
    text_ = {0, 0};
    Painted();
}

void Surface::Print(std::string_view text) {
    const GlyphMask mask = glyphs_.Render(text);
    for (int y = 0; y < mask.height; ++y)
        for (int x = 0; x < mask.width; ++x)
            if (mask.IsSet(x, y)) Paint({text_.x + x, text_.y + y}, ForeColor);
    text_ = {0, text_.y + mask.height};
    Painted();
}

void Surface::SetPicture(Bitmap picture) {
    picture_ = std::move(picture);
    Cls();
}

}  // namespace veltrix
