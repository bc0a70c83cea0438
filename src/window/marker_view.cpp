#include "window/marker_view.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "window/mouse_relay.h"
#include "window/palette.h"

namespace veltrix {

MarkerView::MarkerView(Bindings& bindings, Marker& marker, SurfaceView& view)
    : QWidget(&view), marker_(marker), view_(view) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    new MouseRelay(bindings, marker, *this, MouseRelay::Widget::LeavesMouse,
                   {.toControl = [this](QPointF position) { return OnMarker(position); },
                    .middleIsLeft = true,
                    .toGround = [this](QPointF position) { return view_.OnSurface(mapToParent(position)); }});
    view.WhenPlaced([this] { MoveToPlace(); });
    marker.OnFront = [this] { raise(); };
    bindings.Bind(marker, *this, [this] {
        MoveToPlace();
        update();
    });
}

void MarkerView::MoveToPlace() {
    const int side = std::max(LeastSide, static_cast<int>(std::lround(Marker::Side * view_.Place().factor)));
    const double middle = Marker::Side / 2.0;
    const QPoint centre = view_.InWidget(marker_.Left() + middle, marker_.Top() + middle);
    setGeometry(centre.x() - side / 2, centre.y() - side / 2, side, side);
}

void MarkerView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QColor color = ToColor(marker_.BackColor());
    painter.fillRect(rect(), color);
    if (marker_.Border() == 0) return;
    // Seen against the mark, and on maps of any colour.
    const bool isLight = Contrast(color, Qt::black) > Contrast(color, Qt::white);
    painter.setPen(isLight ? Qt::black : Qt::white);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

QPointF MarkerView::OnMarker(QPointF position) const {
    const double scale = static_cast<double>(Marker::Side) / width();
    return {std::floor(position.x() * scale), std::floor(position.y() * scale)};
}

}  // namespace veltrix
