#include "platform/qt/qt_glyphs.h"

#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <stdexcept>

#include "platform/qt/resources.h"

namespace veltrix {

namespace {

/// So that date and time fit into the caption block of the published pictures, 110 pixels wide.
constexpr int PixelSize = 10;
constexpr int Baseline = 10;
constexpr int MostCharacters = QtGlyphs::MostWidth;  // of which each is a pixel wide at least

/// As much of the text as can be shown, without its line ends.
QString ShownPart(std::string_view text) {
    constexpr std::size_t MostBytesOfCharacter = 4;
    const std::string_view enough = text.substr(0, MostBytesOfCharacter * 2 * MostCharacters);
    QString shown = QString::fromUtf8(enough.data(), static_cast<qsizetype>(enough.size()));
    shown.removeIf([](QChar c) { return c == u'\r' || c == u'\n'; });
    return shown;
}

}  // namespace

QtGlyphs::QtGlyphs() {
    resources::Open();
    // A font by name could be another version of it that is installed. Hinted for plain black and white,
    // which the font's own instructions do alike everywhere.
    font_ = QRawFont(QString(QLatin1String(resources::Font)), PixelSize, QFont::PreferFullHinting);
    if (!font_.isValid()) throw std::logic_error("the built-in font cannot be used on this platform");
}

GlyphMask QtGlyphs::Render(std::string_view text) {
    QList<quint32> characters = font_.glyphIndexesForString(ShownPart(text));
    // Whole pixels of the design, which do not depend on how the computer hints.
    const QList<QPointF> advances = font_.advancesForGlyphIndexes(characters, QRawFont::UseDesignMetrics);
    QList<QPointF> positions;
    GlyphMask mask{0, Height, {}};
    for (const QPointF& advance : advances) {
        const int end = mask.width + qRound(advance.x());
        if (end > MostWidth) break;
        positions.append({static_cast<double>(mask.width), 0.0});
        mask.width = end;
    }
    if (mask.width == 0) return mask;
    characters.resize(positions.size());
    // Without grey in the image there is none in the text.
    QImage image(mask.width, mask.height, QImage::Format_Mono);
    image.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    image.fill(0);
    QGlyphRun run;
    run.setRawFont(font_);
    run.setGlyphIndexes(characters);
    run.setPositions(positions);
    QPainter painter(&image);
    painter.setPen(Qt::black);
    painter.drawGlyphRun({0, Baseline}, run);
    painter.end();

    mask.set.reserve(static_cast<std::size_t>(mask.width) * static_cast<std::size_t>(mask.height));
    for (int y = 0; y < mask.height; ++y)
        for (int x = 0; x < mask.width; ++x)
            mask.set.push_back(static_cast<unsigned char>(image.pixelIndex(x, y)));
    return mask;
}

}  // namespace veltrix
