#include <QFontMetricsF>
#include <QRadialGradient>
#include <array>

#include "pictures.h"

namespace veltrix::art {

namespace {

constexpr int Side = 557;
constexpr double Radius = Side / 2.0 - 4;
/// The middle of pixel (278, 278).
constexpr QPointF Centre(Side / 2.0, Side / 2.0);

// No line may outshine a fading dot, and the field must let the darkest red be seen.
constexpr QColor Field(4, 10, 8);
constexpr QColor FieldAtRim(2, 5, 4);
constexpr QColor Ring(34, 60, 52);
constexpr QColor MiddleRing(46, 80, 68);
constexpr QColor Ray(31, 54, 47);
constexpr QColor Axis(44, 76, 64);
constexpr QColor Tick(62, 88, 78);
constexpr QColor Figure(92, 120, 110);
constexpr QColor Letter(112, 130, 122);

constexpr double ShortTick = 5;
constexpr double LongTick = 9;
constexpr double FigureDistance = Radius - 19;
constexpr double LetterDistance = Radius - 40;

void DrawField(QPainter& painter) {
    QRadialGradient field(Centre, Radius);
    field.setColorAt(0, Field);
    field.setColorAt(1, FieldAtRim);
    painter.setPen(Qt::NoPen);
    painter.setBrush(field);
    painter.drawEllipse(Centre, Radius, Radius);
    painter.setBrush(Qt::NoBrush);
}

void DrawRings(QPainter& painter) {
    for (int ring = 1; ring <= 10; ++ring) {
        const double radius = Radius * ring / 10;
        painter.setPen(QPen(ring == 10 ? Tick : ring == 5 ? MiddleRing : Ring, 1));
        painter.drawEllipse(Centre, radius, radius);
    }
}

void DrawRays(QPainter& painter) {
    for (int bearing = 0; bearing < 360; bearing += 30) {
        painter.setPen(QPen(bearing % 90 == 0 ? Axis : Ray, 1, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(AtBearing(Centre, bearing, bearing % 90 == 0 ? 0 : Radius / 10),
                         AtBearing(Centre, bearing, Radius));
    }
}

void DrawTicks(QPainter& painter) {
    painter.setPen(QPen(Tick, 1, Qt::SolidLine, Qt::FlatCap));
    for (int bearing = 0; bearing < 360; bearing += 5) {
        const double length = bearing % 10 == 0 ? LongTick : ShortTick;
        painter.drawLine(AtBearing(Centre, bearing, Radius - length), AtBearing(Centre, bearing, Radius));
    }
}

/// Text with its middle at a point, on a patch of the field's colour so that no line crosses it.
void DrawText(QPainter& painter, QPointF middle, const QString& text, QColor colour) {
    const QFontMetricsF metrics(painter.font());
    QRectF box = metrics.tightBoundingRect(text);
    box.moveCenter(middle);
    painter.setPen(Qt::NoPen);
    painter.setBrush(FieldAtRim);
    painter.drawRoundedRect(box.adjusted(-3, -3, 3, 3), 3, 3);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(colour);
    painter.drawText(box.topLeft() - metrics.tightBoundingRect(text).topLeft(), text);
}

}  // namespace

QImage Polar(const QString& family) {
    QImage image(Side, Side, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawField(painter);
    DrawRings(painter);
    DrawRays(painter);
    DrawTicks(painter);

    painter.setFont(FontOf(family, 11));
    for (int bearing = 0; bearing < 360; bearing += 30)
        DrawText(painter, AtBearing(Centre, bearing, FigureDistance), QString::number(bearing), Figure);
    painter.setFont(FontOf(family, 18));
    constexpr std::array Letters = {'N', 'E', 'S', 'W'};
    for (std::size_t i = 0; i < Letters.size(); ++i)
        DrawText(painter, AtBearing(Centre, 90.0 * static_cast<double>(i), LetterDistance),
                 QString(QLatin1Char(Letters[i])), Letter);
    return image;
}

}  // namespace veltrix::art
