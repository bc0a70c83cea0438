#pragma once
// The mouse on a widget whose model follows it.

#include <QMouseEvent>
#include <QObject>
#include <QWidget>
#include <functional>
#include <optional>

#include "window/bindings.h"

namespace veltrix {

/// Where a widget's positions lie on its control; what is not given is the widget's own. And what the mouse
/// means there.
struct MouseGround {
    std::function<QPointF(QPointF)> toControl = {};  ///< the same in the control's coordinates
    std::function<bool(QPointF)> holds = {};         ///< whether the control is there
    bool middleIsLeft = false;                       ///< the middle button acts as the left one
    /// Where a position lies for whom the control is dropped on; given, the left button drags the control.
    std::function<QPointF(QPointF)> toGround = {};
};

/// Passes presses, moves, releases and clicks on a widget to its control, as far as the form has set handlers
/// for them. What begins outside the control is not its own; what began on it goes on outside. A click is a
/// release inside. A control that can be dragged, and was moved far enough, is dropped instead. Other buttons
/// than the left and the right one mean nothing. Owned by the widget.
class MouseRelay final : public QObject {
  public:
    /// Whether the widget gets the mouse all the same. From one that does, moves are passed on only while a
    /// button is held.
    enum class Widget { NeedsMouse, LeavesMouse };

    MouseRelay(Bindings& bindings, Control& control, QWidget& widget, Widget needs, MouseGround ground = {});

    /// A whole click at a place of the control, as by a key.
    void Click(MouseButton button, QPointF place);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Pass(const QMouseEvent& event);
    void Move(const QMouseEvent& event);
    bool Drags(const QMouseEvent& event);
    void EndDrag();
    void Press(QPointF position, MouseButton button);
    void Release(QPointF position, MouseButton button, bool last);
    std::optional<MouseButton> ButtonFor(Qt::MouseButton button) const;

    QWidget& TheWidget() { return static_cast<QWidget&>(*parent()); }

    Bindings& bindings_;
    Control& control_;
    Widget needs_;
    MouseGround ground_;
    bool pressed_ = false;
    QPointF pressedAt_;
    bool dragged_ = false;
};

}  // namespace veltrix
