#pragma once
// Pictures of what was found.

#include <memory>
#include <string>

#include "archive/pair_analysis.h"
#include "common/bitmap.h"
#include "platform/glyphs.h"

namespace veltrix {

/// The part of Qt that draws text, without a screen. One at a time.
class TextDrawing {
  public:
    TextDrawing();
    ~TextDrawing();
    TextDrawing(const TextDrawing&) = delete;
    TextDrawing& operator=(const TextDrawing&) = delete;

    /// The one font of the displays.
    Glyphs& TheGlyphs() { return *glyphs_; }

  private:
    struct Application;
    std::unique_ptr<Application> application_;
    std::unique_ptr<Glyphs> glyphs_;
};

/// Writes a PNG file, whole. Raises std::system_error.
void WritePng(const Bitmap& picture, const std::string& name);

/// The map around the first station with a dot for each strike, the latest white, the earliest red, and a
/// cross for each station. REQUIRES a radius that maps can have.
Bitmap StrikeMap(const StationRecord& first, const StationRecord& second, const PairFindings& findings,
                 double radius, Glyphs& glyphs);

}  // namespace veltrix
