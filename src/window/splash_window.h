#pragma once
// The splash form on the screen.

#include <QWidget>

#include "display/picture_box.h"
#include "window/bindings.h"

namespace veltrix {

/// Shows a picture over the main window while its form is visible. A click, or any key, is a click on the
/// form.
class SplashWindow final : public QWidget {
  public:
    /// `picture` holds what it shows.
    SplashWindow(Bindings& bindings, Control& form, const PictureBox& picture, QWidget& over);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void Click();

    Bindings& bindings_;
    Control& form_;
    const PictureBox& picture_;
};

}  // namespace veltrix
