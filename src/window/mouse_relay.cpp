#include "window/mouse_relay.h"

namespace veltrix {

MouseButton ButtonFor(Qt::MouseButton button) {
    return button == Qt::RightButton ? MouseButton::Right : MouseButton::Left;
}

MouseButton ButtonFor(Qt::MouseButtons buttons) {
    return buttons.testFlag(Qt::RightButton) ? MouseButton::Right : MouseButton::Left;
}

MouseRelay::MouseRelay(Bindings& bindings, Control& control, QWidget& widget, Widget needs)
    : QObject(&widget), bindings_(bindings), control_(control), widget_(widget), needs_(needs) {
    widget.installEventFilter(this);
}

bool MouseRelay::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    const bool ofMouse = type == QEvent::MouseButtonPress || type == QEvent::MouseMove ||
                         type == QEvent::MouseButtonRelease || type == QEvent::MouseButtonDblClick;
    if (!ofMouse || !(control_.OnMouse || control_.OnClick)) return QObject::eventFilter(watched, event);
    return Pass(static_cast<const QMouseEvent&>(*event)) && needs_ == Widget::LeavesMouse;
}

bool MouseRelay::Pass(const QMouseEvent& event) {
    const double x = event.position().x();
    const double y = event.position().y();
    if (event.type() == QEvent::MouseMove) {
        const MouseEvent moved{MouseAction::Move, ButtonFor(event.buttons()), x, y};
        if (event.buttons() != Qt::NoButton) bindings_.ActQuietly([&] { control_.Mouse(moved); });
        return true;
    }
    const bool released = event.type() == QEvent::MouseButtonRelease;
    const MouseButton button = ButtonFor(event.button());
    bindings_.Act(control_, [&] {
        control_.Mouse({released ? MouseAction::Up : MouseAction::Down, button, x, y});
        if (released && widget_.rect().contains(event.position().toPoint())) control_.ClickBy(button);
    });
    return true;
}

}  // namespace veltrix
