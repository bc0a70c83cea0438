#include "window/splash_window.h"

#include <QPainter>

#include "window/surface_view.h"

namespace veltrix {

SplashWindow::SplashWindow(Bindings& bindings, Control& form, const PictureBox& picture, QWidget& over)
    : QWidget(&over, Qt::Dialog | Qt::FramelessWindowHint),
      bindings_(bindings),
      form_(form),
      picture_(picture) {
    setFixedSize(SizeOf(picture));
    bindings.Bind(form, *this, nullptr);
}

void SplashWindow::paintEvent(QPaintEvent* /*event*/) {
    QPainter(this).drawImage(rect(), ToImage(picture_.surface.Image()));
}

void SplashWindow::showEvent(QShowEvent* /*event*/) {
    move(parentWidget()->frameGeometry().center() - rect().center());
}

void SplashWindow::mouseReleaseEvent(QMouseEvent* /*event*/) {
    Click();
}

void SplashWindow::keyPressEvent(QKeyEvent* /*event*/) {
    Click();
}

void SplashWindow::Click() {
    bindings_.Act(form_, [this] { form_.ClickBy(MouseButton::Left); });
}

}  // namespace veltrix
