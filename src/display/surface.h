#pragma once
// A drawing surface: an array of pixels with a scale. What is drawn stays until it is drawn over or cleared,
// whether anybody looks or not.

#include <cstddef>
#include <functional>
#include <string_view>

#include "common/bitmap.h"
#include "platform/glyphs.h"

namespace veltrix {

/// How the coordinates of a surface lie over its pixels: the coordinates of its upper left corner, and how
/// far it is from there to the lower right one. A negative height lets y count upward.
struct SurfaceScale {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

/// Pixels that all displays draw on. Coordinates are in the surface's own scale and taken as 4-byte floats; a
/// coordinate belongs to the pixel that it lies in. Whatever falls outside is left out. Painting one pixel
/// costs a few compares and a store.
class Surface {
  public:
    /// A surface of `width` by `height` pixels. REQUIRES a scale whose width and height are not 0.
    Surface(int width, int height, Glyphs& glyphs, const SurfaceScale& scale);

    /// The size in the surface's scale; for a scale whose y counts upward the height is negative.
    double ScaleWidth() const { return scale_.width; }
    double ScaleHeight() const { return scale_.height; }
    const SurfaceScale& Scale() const { return scale_; }

    /// Paints one pixel and moves the text position there.
    void PSet(double x, double y, ColourValue color);
    /// Reads one pixel; -1 outside.
    ColourValue Point(double x, double y) const;
    /// A straight line, both ends included.
    void Line(double x1, double y1, double x2, double y2, ColourValue color);
    /// The outline of a circle; the radius is in units of the width. A pixel stands for the coordinates of
    /// its upper left corner, so that a circle around a pixel's coordinates is symmetric about that pixel.
    void Circle(double x, double y, double radius, ColourValue color);
    /// Clears to the picture, or to the background colour where there is none, and sets the text position to
    /// the upper left corner.
    void Cls();
    /// Prints at the text position in the fore colour and moves the text position to the left end of the next
    /// line.
    void Print(std::string_view text);

    /// What text is written in, and what clearing and an uncovered ground show.
    ColourValue ForeColor = White;
    ColourValue BackColor = Black;

    /// Takes a picture as what lies under the drawing, in place of everything painted: from the upper left
    /// corner, without stretching it; what it does not cover is in the background colour.
    void SetPicture(Bitmap picture);
    /// A snapshot of what is painted, with all drawings.
    const Bitmap& Image() const { return image_; }

    /// Told once when something was painted since the last call of Shown().
    std::function<void()> OnPainted;
    /// Says that what is painted has been taken over by whoever shows it.
    void Shown() { shown_ = true; }

  private:
    struct Pixel {
        int x;
        int y;
    };

    /// Distances from the left and the upper edge in pixels. Multiplied before it is divided, so that whole
    /// coordinates on the border between two pixels stay there.
    double AcrossPixels(double x) const {
        return (static_cast<float>(x) - scale_.left) * image_.width / scale_.width;
    }
    double DownPixels(double y) const {
        return (static_cast<float>(y) - scale_.top) * image_.height / scale_.height;
    }
    Pixel PixelOf(double x, double y) const;
    bool Holds(Pixel at) const {
        return at.x >= 0 && at.x < image_.width && at.y >= 0 && at.y < image_.height;
    }
    std::size_t PlaceOf(Pixel at) const {
        return static_cast<std::size_t>(at.y) * static_cast<std::size_t>(image_.width) +
               static_cast<std::size_t>(at.x);
    }
    void Paint(Pixel at, ColourValue color) {
        if (Holds(at)) image_.pixels[PlaceOf(at)] = color;
    }
    void Painted() {
        if (shown_) TellPainted();
    }
    void TellPainted();

    Glyphs& glyphs_;
    SurfaceScale scale_;
    Bitmap image_;
    Bitmap picture_;
    Pixel text_{0, 0};  // where the next text begins
    bool shown_ = true;
};

}  // namespace veltrix
