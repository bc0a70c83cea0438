#include <QLinearGradient>
#include <QPainterPath>
#include <cmath>

#include "pictures.h"

namespace veltrix::art {

QPointF AtBearing(QPointF centre, double bearing, double distance) {
    const double angle = bearing * std::acos(-1.0) / 180;
    return centre + QPointF(distance * std::sin(angle), -distance * std::cos(angle));
}

QFont FontOf(const QString& family, int pixels, bool bold) {
    QFont font(family);
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

void DrawFlash(QPainter& painter, QPointF top, double height) {
    // In hundredths of the height, from the middle of the upper edge.
    constexpr double Corners[][2] = {{-4, 0}, {20, 0}, {7, 33}, {24, 33}, {-13, 100}, {-3, 50}, {-22, 50}};
    QPainterPath path;
    for (const auto& [x, y] : Corners) {
        const QPointF point = top + QPointF(x, y) * (height / 100);
        if (path.elementCount() == 0)
            path.moveTo(point);
        else
            path.lineTo(point);
    }
    path.closeSubpath();

    painter.save();
    painter.setBrush(Qt::NoBrush);
    for (int ring = 6; ring >= 1; --ring) {
        const QColor glow(255, 200, 40, 13);
        painter.setPen(QPen(glow, ring * height / 40, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(path);
    }
    QLinearGradient body(top, top + QPointF(0, height));
    body.setColorAt(0, QColor(255, 250, 205));
    body.setColorAt(0.45, QColor(255, 222, 60));
    body.setColorAt(1, QColor(240, 150, 20));
    painter.setPen(QPen(QColor(30, 20, 0), height / 90, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
    painter.setBrush(body);
    painter.drawPath(path);
    painter.restore();
}

}  // namespace veltrix::art
