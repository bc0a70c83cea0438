#include "window/palette.h"

#include <algorithm>
#include <cmath>

namespace veltrix {

namespace {

constexpr double WellReadable = 4.5;

double Linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) +
           0.0722 * Linear(colour.blueF());
}

}  // namespace

QColor ToColor(ColourValue colour) {
    return {colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF};
}

double Contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor ReadableOn(const QColor& background, const QColor& wanted) {
    constexpr int Steps = 20;
    const QColor end =
        Contrast(background, Qt::white) >= Contrast(background, Qt::black) ? Qt::white : Qt::black;
    for (int step = 0; step < Steps; ++step) {
        const auto part = static_cast<float>(step) / Steps;
        const auto mix = [part](float from, float to) { return from + (to - from) * part; };
        const QColor tried =
            QColor::fromRgbF(mix(wanted.redF(), end.redF()), mix(wanted.greenF(), end.greenF()),
                             mix(wanted.blueF(), end.blueF()));
        if (Contrast(background, tried) >= WellReadable) return tried;
    }
    return end;
}

QPalette DisplayPalette() {
    const QColor text(214, 218, 222);
    const QColor faint(120, 126, 132);
    QPalette palette(QColor(44, 48, 53), QColor(18, 20, 22));  // buttons, window
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Base, QColor(30, 33, 37));
    palette.setColor(QPalette::AlternateBase, QColor(36, 40, 44));
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Highlight, QColor(58, 110, 165));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

void ShowColours(QWidget& widget, PaletteRoles roles, ColourValue text, ColourValue background,
                 bool onlyShows) {
    const bool ownBackground = background != Black;
    if (text == White && !ownBackground && !onlyShows) {
        if (widget.testAttribute(Qt::WA_SetPalette)) widget.setPalette(QPalette());
        return;
    }
    const QPalette around = widget.parentWidget() ? widget.parentWidget()->palette() : QPalette();
    QPalette own;
    QColor under = around.color(onlyShows ? QPalette::Window : roles.background);
    if (ownBackground) under = ToColor(background);
    if (ownBackground || onlyShows) own.setColor(roles.background, under);
    QColor over = around.color(onlyShows ? QPalette::WindowText : roles.text);
    if (text != White || ownBackground) {
        // White is the colour of a text that was given none.
        const QColor strongest =
            Contrast(under, Qt::white) >= Contrast(under, Qt::black) ? Qt::white : Qt::black;
        over = text == White ? strongest : ReadableOn(under, ToColor(text));
        own.setColor(roles.text, over);
    }
    const QPalette now = widget.palette();
    const bool same = now.color(roles.text) == over && now.color(roles.background) == under;
    if (same && widget.testAttribute(Qt::WA_SetPalette)) return;
    if (roles.background == QPalette::Window) widget.setAutoFillBackground(ownBackground);
    widget.setPalette(own);
}

}  // namespace veltrix
