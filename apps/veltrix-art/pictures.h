#pragma once
// The pictures of the program, each drawn from scratch.

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPointF>

namespace veltrix::art {

/// The polar background: dark, so that the dots of detections stand out and may fade to nothing.
QImage Polar(const QString& family);

/// The picture of the splash form.
QImage Splash(const QString& family);

/// The icon of the program.
QImage Icon();

/// A flash of lightning that fills the height from `top` down, its tip below the middle of `top`.
void DrawFlash(QPainter& painter, QPointF top, double height);

/// A point at a compass bearing, in degrees, and a distance from `centre`.
QPointF AtBearing(QPointF centre, double bearing, double distance);

/// The font of the pictures, `pixels` high.
QFont FontOf(const QString& family, int pixels, bool bold = false);

}  // namespace veltrix::art
