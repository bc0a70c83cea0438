#pragma once
// The mouse on a text or label whose model follows it.

#include <QMouseEvent>
#include <QObject>
#include <QWidget>
#include <optional>

#include "window/bindings.h"

namespace veltrix {

/// The button of a model that a button of the mouse stands for: the right one is itself, any other is the
/// left.
MouseButton ButtonFor(Qt::MouseButton button);
/// The one held down during a move; the left when none is.
MouseButton ButtonFor(Qt::MouseButtons buttons);

/// Passes presses, moves with a button held, releases and clicks on a widget to its control, in the widget's
/// own coordinates, as far as the form has set handlers for them. Owned by the widget. Where the widget needs
/// the mouse itself, it still gets it.
class MouseRelay final : public QObject {
  public:
    enum class Widget { NeedsMouse, LeavesMouse };

    MouseRelay(Bindings& bindings, Control& control, QWidget& widget, Widget needs);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool Pass(const QMouseEvent& event);

    Bindings& bindings_;
    Control& control_;
    QWidget& widget_;
    Widget needs_;
};

}  // namespace veltrix
