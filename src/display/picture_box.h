#pragma once
// A drawing surface as a control of the form.

#include <optional>
#include <string>

#include "display/surface.h"
#include "platform/controls.h"

namespace veltrix {

/// A surface under its name. Mouse positions are in the surface's own scale. Owned by the form's set of
/// controls.
class PictureBox final : public Control {
  public:
    PictureBox(std::string name, int width, int height, const SurfaceScale& scale, Glyphs& glyphs)
        : Control(std::move(name), ControlKind::Picture), surface(width, height, glyphs, scale) {}

    /// What is drawn on.
    Surface surface;

    /// The colours that the surface draws with.
    ColourValue ForeColor() const override { return surface.ForeColor; }
    ColourValue BackColor() const override { return surface.BackColor; }

    std::optional<Bitmap> Snapshot() const override { return surface.Image(); }
    std::optional<ColourValue> PixelAt(double x, double y) const override { return surface.Point(x, y); }
    std::vector<std::string> Lines() const override {
        return {std::to_string(surface.Image().width) + " " + std::to_string(surface.Image().height)};
    }

  protected:
    bool AlwaysFollowsMouse() const override { return true; }
};

}  // namespace veltrix
