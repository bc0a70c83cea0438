#include "display/surface.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace veltrix {

namespace {

constexpr double Far = 1e9;  // pixels; whatever lies beyond is taken to lie there

/// The pixel that a distance from the edge lies in: its integer part. What is no number is kept outside.
int PixelAt(double distance) {
    if (!(distance > -Far && distance < Far))
        return distance > 0 ? static_cast<int>(Far) : -static_cast<int>(Far);
    const int whole = static_cast<int>(distance);
    return distance < whole ? whole - 1 : whole;
}

int NearestPixel(double distance) {
    return PixelAt(distance + 0.5);
}

/// A row of steps along a line, both ends included; empty where the first lies behind the last.
struct Steps {
    std::int64_t first;
    std::int64_t last;
};

/// Those of `steps` steps of one pixel each, on the way from `from` to `to`, that lie on `size` pixels.
Steps StepsOn(int size, int from, int to, std::int64_t steps) {
    const Steps on = to < from ? Steps{from - (size - 1), from} : Steps{-from, size - 1 - from};
    return {std::max<std::int64_t>(on.first, 0), std::min(on.last, steps)};
}

/// One coordinate on the way along a line, as Bresenham walks it: a whole pixel with each step along the
/// longer side, one across when it is due.
class LineWalk {
  public:
    /// From `from` to `to` in `steps` steps, of which `done` are behind.
    LineWalk(int from, int to, std::int64_t steps, std::int64_t done)
        : length_(std::abs(to - from)), steps_(steps), sign_(to < from ? -1 : 1) {
        const std::int64_t gone = done == 0 ? 0 : (done * length_ + steps - 1 - steps / 2) / steps;
        at_ = from + sign_ * static_cast<int>(gone);
        due_ = steps / 2 - done * length_ + gone * steps;
    }
    int At() const { return at_; }
    void Step() {
        due_ -= length_;
        if (due_ >= 0) return;
        at_ += sign_;
        due_ += steps_;
    }

  private:
    std::int64_t length_;
    std::int64_t steps_;
    std::int64_t due_ = 0;
    int sign_;
    int at_ = 0;
};

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
    const Pixel from = PixelOf(x1, y1);
    const Pixel to = PixelOf(x2, y2);
    const std::int64_t width = std::abs(to.x - from.x);
    const std::int64_t height = std::abs(to.y - from.y);
    const std::int64_t steps = std::max(width, height);
    const Steps seen = width >= height ? StepsOn(image_.width, from.x, to.x, steps)
                                       : StepsOn(image_.height, from.y, to.y, steps);
    if (seen.first > seen.last) return;
    LineWalk x(from.x, to.x, steps, seen.first);
    LineWalk y(from.y, to.y, steps, seen.first);
    for (std::int64_t i = seen.first; i <= seen.last; ++i) {
        Paint({x.At(), y.At()}, color);
        x.Step();
        y.Step();
    }
    Painted();
}

void Surface::Circle(double x, double y, double radius, ColourValue color) {
    const double centreX = AcrossPixels(x);
    const double centreY = DownPixels(y);
    const double r = std::abs(AcrossPixels(radius) - AcrossPixels(0));
    if (!std::isfinite(centreX + centreY + r)) return;
    // One pixel in each column of the flat arcs and in each row of the steep ones.
    const double reach = r * std::sqrt(0.5);
    const auto walk = [&](double middle, int size, auto&& paint) {
        const double last = std::min<double>(middle + reach, size - 1);
        for (double along = std::max(std::ceil(middle - reach), 0.0); along <= last; ++along) {
            const double across = std::sqrt(std::max(r * r - (along - middle) * (along - middle), 0.0));
            paint(static_cast<int>(along), -across);
            paint(static_cast<int>(along), across);
        }
    };
    walk(centreX, image_.width, [&](int column, double across) {
        Paint({column, NearestPixel(centreY + across)}, color);
    });
    walk(centreY, image_.height, [&](int row, double across) {
        Paint({NearestPixel(centreX + across), row}, color);
    });
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
