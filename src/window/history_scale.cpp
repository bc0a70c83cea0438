#include "window/history_scale.h"

#include <QPainter>
#include <algorithm>

#include "window/palette.h"

namespace veltrix {

namespace {

constexpr int Tick = 5;  // pixels
constexpr int Gap = 3;
constexpr int Hours = 24;
constexpr int Bearings = 180;
constexpr int CaptionHours = 3;  // the corner belongs to the caption
constexpr int TextAlpha = 150;
constexpr int GridAlpha = 28;

}  // namespace

HistoryScale::HistoryScale(SurfaceView& view) : QWidget(&view), view_(view) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    view.WhenPlaced([this, &view] {
        setGeometry(view.rect());
        lower();
    });
}

void HistoryScale::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    for (int hour = 0; hour <= Hours; hour += 3)
        Mark(painter, hour, Bearings,
             hour % 6 == 0 ? QString::number(hour) + QStringLiteral(" h") : QString());
    for (int bearing = 0; bearing < Bearings; bearing += 45)
        Mark(painter, bearing == 0 ? CaptionHours : 0, bearing,
             QString::number(bearing) + QStringLiteral("°"));
}

void HistoryScale::Mark(QPainter& painter, double hour, double bearing, const QString& text) const {
    const SurfaceScale& scale = view_.Box().surface.Scale();
    const QSize pixels = SizeOf(view_.Box());
    const QPoint at =
        view_.InWidget(hour * pixels.width() / scale.width, bearing * pixels.height() / scale.height);
    const QRect plot(view_.InWidget(0, 0), view_.InWidget(pixels.width(), pixels.height()));
    const bool below = bearing == Bearings;
    QColor ink = DisplayPalette().color(QPalette::WindowText);
    ink.setAlpha(GridAlpha);
    painter.setPen(ink);
    painter.drawLine(at, below ? QPoint(at.x(), plot.top()) : QPoint(plot.right(), at.y()));
    ink.setAlpha(TextAlpha);
    painter.setPen(ink);
    painter.drawLine(at, below ? at - QPoint(0, Tick) : at + QPoint(Tick, 0));
    QRect room = painter.fontMetrics().boundingRect(text);
    if (below) {
        room.moveBottomLeft(at - QPoint(room.width() / 2, Tick + Gap));
        room.moveLeft(std::clamp(room.left(), plot.left() + Gap, plot.right() - room.width() - Gap));
    } else {
        room.moveTopLeft(at + QPoint(Tick + Gap, Gap));
    }
    painter.drawText(room, Qt::AlignCenter | Qt::TextDontClip, text);
}

}  // namespace veltrix
