#include "window/marker_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "window/mouse_relay.h"
#include "window/palette.h"

namespace veltrix {

namespace {

/// On a view much smaller than its surface a mark can still be hit.
constexpr int LeastSide = 7;

}  // namespace

MarkerView::MarkerView(Bindings& bindings, Marker& marker, SurfaceView& view)
    : QWidget(&view), bindings_(bindings), marker_(marker), view_(view) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    view.WhenPlaced([this] { MoveToPlace(); });
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
    QPainter(this).fillRect(rect(), ToColor(marker_.BackColor()));
}

MouseEvent MarkerView::EventAt(const QMouseEvent& event, MouseAction action, MouseButton button) const {
    const double scale = static_cast<double>(Marker::Side) / width();
    return {action, button, std::floor(event.position().x() * scale),
            std::floor(event.position().y() * scale)};
}

void MarkerView::mousePressEvent(QMouseEvent* event) {
    const MouseEvent pressed = EventAt(*event, MouseAction::Down, ButtonFor(event->button()));
    bindings_.Act(marker_, [&] { marker_.Mouse(pressed); });
}

void MarkerView::mouseMoveEvent(QMouseEvent* event) {
    const MouseEvent moved = EventAt(*event, MouseAction::Move, ButtonFor(event->buttons()));
    bindings_.ActQuietly([&] { marker_.Mouse(moved); });
}

void MarkerView::mouseReleaseEvent(QMouseEvent* event) {
    const MouseButton button = ButtonFor(event->button());
    const MouseEvent released = EventAt(*event, MouseAction::Up, button);
    const bool inside = rect().contains(event->position().toPoint());
    bindings_.Act(marker_, [&] {
        marker_.Mouse(released);
        if (inside) marker_.ClickBy(button);
    });
}

}  // namespace veltrix
