#include "window/mouse_relay.h"

#include <QApplication>
#include <utility>

namespace veltrix {

namespace {

MouseEvent EventAt(QPointF place, MouseAction action, MouseButton button) {
    return {action, button, place.x(), place.y()};
}

}  // namespace

MouseRelay::MouseRelay(Bindings& bindings, Control& control, QWidget& widget, Widget needs,
                       MouseGround ground)
    : QObject(&widget), bindings_(bindings), control_(control), needs_(needs), ground_(std::move(ground)) {
    if (!ground_.toControl) ground_.toControl = [](QPointF position) { return position; };
    if (!ground_.holds)
        ground_.holds = [&widget](QPointF position) { return widget.rect().contains(position.toPoint()); };
    widget.installEventFilter(this);
}

bool MouseRelay::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::Hide && dragged_) {
        EndDrag();
        pressed_ = false;
    }
    const bool ofMouse = type == QEvent::MouseButtonPress || type == QEvent::MouseMove ||
                         type == QEvent::MouseButtonRelease || type == QEvent::MouseButtonDblClick;
    if (!ofMouse || !(control_.OnMouse || control_.OnClick)) return QObject::eventFilter(watched, event);
    Pass(static_cast<const QMouseEvent&>(*event));
    return needs_ == Widget::LeavesMouse;
}

std::optional<MouseButton> MouseRelay::ButtonFor(Qt::MouseButton button) const {
    if (button == Qt::RightButton) return MouseButton::Right;
    if (button == Qt::LeftButton || (button == Qt::MiddleButton && ground_.middleIsLeft))
        return MouseButton::Left;
    return std::nullopt;
}

void MouseRelay::Pass(const QMouseEvent& event) {
    if (event.type() == QEvent::MouseMove) return Move(event);
    const std::optional<MouseButton> button = ButtonFor(event.button());
    if (!button) return;
    if (event.type() == QEvent::MouseButtonRelease)
        Release(event.position(), *button, event.buttons() == Qt::NoButton);
    else
        Press(event.position(), *button);
}

/// From a certain way on the control hangs on the mouse until the button is released.
bool MouseRelay::Drags(const QMouseEvent& event) {
    if (!dragged_ && pressed_ && ground_.toGround && event.buttons().testFlag(Qt::LeftButton) &&
        (event.position() - pressedAt_).manhattanLength() >= QApplication::startDragDistance()) {
        dragged_ = true;
        TheWidget().setCursor(Qt::ClosedHandCursor);
    }
    return dragged_;
}

void MouseRelay::EndDrag() {
    dragged_ = false;
    TheWidget().unsetCursor();
}

void MouseRelay::Move(const QMouseEvent& event) {
    if (Drags(event)) return;
    const bool follows = needs_ == Widget::LeavesMouse && ground_.holds(event.position());
    if (!pressed_ && !follows) return;
    const MouseButton button =
        event.buttons().testFlag(Qt::RightButton) ? MouseButton::Right : MouseButton::Left;
    const MouseEvent moved = EventAt(ground_.toControl(event.position()), MouseAction::Move, button);
    bindings_.ActQuietly([&] { control_.Mouse(moved); });
}

void MouseRelay::Press(QPointF position, MouseButton button) {
    if (dragged_) return;
    pressed_ = ground_.holds(position);
    if (!pressed_) return;
    pressedAt_ = position;
    const MouseEvent pressed = EventAt(ground_.toControl(position), MouseAction::Down, button);
    bindings_.Act(control_, [&] { control_.Mouse(pressed); });
}

void MouseRelay::Release(QPointF position, MouseButton button, bool last) {
    if (!pressed_) return;
    if (dragged_ && button != MouseButton::Left) return;
    pressed_ = !last;
    if (dragged_) {
        EndDrag();
        const MouseEvent dropped = EventAt(ground_.toGround(position), MouseAction::Drop, button);
        return bindings_.Act(control_, [&] { control_.Mouse(dropped); });
    }
    const MouseEvent released = EventAt(ground_.toControl(position), MouseAction::Up, button);
    bindings_.Act(control_, [&] {
        control_.Mouse(released);
        if (ground_.holds(position)) control_.ClickBy(button);
    });
}

void MouseRelay::Click(MouseButton button, QPointF place) {
    bindings_.Act(control_, [&] {
        control_.Mouse(EventAt(place, MouseAction::Down, button));
        control_.Mouse(EventAt(place, MouseAction::Up, button));
        control_.ClickBy(button);
    });
}

}  // namespace veltrix
