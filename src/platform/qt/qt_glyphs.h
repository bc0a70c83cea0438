#pragma once
// Text drawn by Qt with the font that is built into the program.

#include <QRawFont>

#include "platform/glyphs.h"

namespace veltrix {

/// REQUIRES an application object with fonts (QGuiApplication); the platform plugins "xcb", "wayland" and
/// "offscreen" all give the same pixels, whatever the user's font settings are.
class QtGlyphs final : public Glyphs {
  public:
    static constexpr int Height = 13;       ///< pixels, of every text
    static constexpr int MostWidth = 4096;  ///< pixels; a text is cut to the characters that fit

    QtGlyphs();

    /// `text` is UTF-8; bytes that are not show as a replacement character.
    GlyphMask Render(std::string_view text) override;

  private:
    QRawFont font_;
};

}  // namespace veltrix
