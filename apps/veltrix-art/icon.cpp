#include <QLinearGradient>

#include "pictures.h"

namespace veltrix::art {

namespace {

constexpr int Side = 256;
constexpr QPointF Middle(Side / 2.0, 116);

/// One loop antenna as it is seen from a little above: `width` tells how much it is turned to the eye.
void DrawLoop(QPainter& painter, double width, QColor wire) {
    constexpr double HalfHeight = 88;
    painter.setBrush(Qt::NoBrush);
    for (const auto& [thickness, colour] :
         {std::pair{15.0, QColor(8, 14, 16)}, {10.0, wire}, {3.0, wire.lighter(150)}}) {
        painter.setPen(QPen(colour, thickness));
        painter.drawEllipse(Middle, width, HalfHeight);
    }
}

}  // namespace

QImage Icon() {
    QImage image(Side, Side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient ground(0, 0, 0, Side);
    ground.setColorAt(0, QColor(34, 58, 62));
    ground.setColorAt(1, QColor(10, 18, 22));
    painter.setPen(QPen(QColor(84, 124, 118), 3));
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(5, 5, Side - 10, Side - 10), 44, 44);

    // The mast goes into its foot.
    painter.setPen(QPen(QColor(8, 14, 16), 18, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(Middle + QPointF(0, 88), QPointF(Side / 2.0, 232));
    painter.setPen(QPen(QColor(124, 158, 150), 10, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(Middle + QPointF(0, 88), QPointF(Side / 2.0, 228));
    painter.setPen(QPen(QColor(124, 158, 150), 10, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(92, 230), QPointF(164, 230));

    DrawLoop(painter, 92, QColor(96, 150, 140));
    DrawLoop(painter, 34, QColor(66, 112, 108));
    DrawFlash(painter, Middle + QPointF(2, -66), 140);
    return image;
}

}  // namespace veltrix::art
