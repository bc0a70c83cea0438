#include <QLinearGradient>
#include <QPainterPath>
#include <QRadialGradient>

#include "pictures.h"

namespace veltrix::art {

namespace {

constexpr int Width = 480;
constexpr int Height = 300;
constexpr QPointF Rose(132, 150);
constexpr double RoseRadius = 104;

void DrawGround(QPainter& painter) {
    QLinearGradient ground(0, 0, 0, Height);
    ground.setColorAt(0, QColor(10, 16, 22));
    ground.setColorAt(1, QColor(3, 6, 8));
    painter.fillRect(0, 0, Width, Height, ground);
    QRadialGradient glow(Rose, 190);
    glow.setColorAt(0, QColor(40, 90, 84, 110));
    glow.setColorAt(1, QColor(40, 90, 84, 0));
    painter.fillRect(0, 0, Width, Height, glow);
    painter.setPen(QPen(QColor(46, 74, 70), 1));
    painter.drawRect(QRectF(0.5, 0.5, Width - 1, Height - 1));
}

void DrawRose(QPainter& painter) {
    for (int ring = 1; ring <= 4; ++ring) {
        const double radius = RoseRadius * ring / 4;
        painter.setPen(QPen(ring == 4 ? QColor(120, 168, 156) : QColor(48, 82, 76), ring == 4 ? 1.6 : 1));
        painter.drawEllipse(Rose, radius, radius);
    }
    for (int bearing = 0; bearing < 360; bearing += 5) {
        const double length = bearing % 30 == 0 ? 11 : bearing % 10 == 0 ? 7 : 4;
        painter.setPen(QPen(QColor(120, 168, 156), bearing % 30 == 0 ? 1.6 : 1));
        painter.drawLine(AtBearing(Rose, bearing, RoseRadius - length), AtBearing(Rose, bearing, RoseRadius));
    }
    // The star: each point half light, half dark.
    for (int bearing = 0; bearing < 360; bearing += 45) {
        const double reach = bearing % 90 == 0 ? RoseRadius - 16 : RoseRadius * 0.46;
        for (const int side : {-45, 45}) {
            QPainterPath half(Rose);
            half.lineTo(AtBearing(Rose, bearing + side / 2.0, RoseRadius * 0.17));
            half.lineTo(AtBearing(Rose, bearing, reach));
            half.closeSubpath();
            painter.fillPath(half, side > 0 ? QColor(44, 76, 72) : QColor(86, 130, 122));
        }
    }
}

}  // namespace

QImage Splash(const QString& family) {
    QImage image(Width, Height, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawGround(painter);
    DrawRose(painter);
    DrawFlash(painter, Rose + QPointF(0, -88), 176);

    QFont name = FontOf(family, 42, true);
    name.setLetterSpacing(QFont::AbsoluteSpacing, 2);
    painter.setFont(name);
    painter.setPen(QColor(232, 240, 236));
    painter.drawText(QPointF(258, 150), QStringLiteral("Veltrix"));
    painter.setPen(QPen(QColor(240, 190, 50), 2));
    painter.drawLine(QPointF(260, 166.5), QPointF(456, 166.5));
    painter.setFont(FontOf(family, 11));
    painter.setPen(QColor(150, 186, 176));
    painter.drawText(QPointF(260, 188), QStringLiteral("Lightning observation station"));
    return image;
}

}  // namespace veltrix::art
