#pragma once
// Colours of the window: those of the models made readable on whatever palette the desktop has.

#include <QColor>
#include <QPalette>
#include <QWidget>

#include "common/colour.h"

namespace veltrix {

/// The colour of a colour value, for the painter.
QColor ToColor(ColourValue colour);

/// How well one colour stands out from the other, from 1 to 21 (WCAG 2, contrast ratio).
double Contrast(const QColor& one, const QColor& other);

/// The colour itself where it stands out from the background by 4.5, else the nearest one of its hue that
/// does.
QColor ReadableOn(const QColor& background, const QColor& wanted);

/// Near-black, for what surrounds the displays.
QPalette DisplayPalette();

/// Which of a palette's roles a kind of widget writes with and stands on.
struct PaletteRoles {
    QPalette::ColorRole text;
    QPalette::ColorRole background;
};

/// Gives a widget its model's colours. White text and black background are what every model has at first and
/// mean the palette's own; a text in another colour is readable on its background, and on a background of its
/// own every text is. A box that only shows stands on the colour of the window.
void ShowColours(QWidget& widget, PaletteRoles roles, ColourValue text, ColourValue background,
                 bool onlyShows);

}  // namespace veltrix
