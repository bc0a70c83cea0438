#pragma once
// The message box on a screen.

#include <QMessageBox>
#include <QWidget>

#include "platform/message_box.h"
#include "platform/qt/qt_event_loop.h"

namespace veltrix {

/// Asks the user in a box of its own; the timers of the loop wait meanwhile. Enter and Escape take the reply
/// that does least: the program goes on. A box that ends because the program does replies the same, and so
/// does a second one while another stands, without being shown. REQUIRES that the loop outlives it.
class WindowMessageBox final : public MessageBox {
  public:
    explicit WindowMessageBox(QtEventLoop& loop) : loop_(loop) {}

    int Ask(const Question& question) override;

  private:
    QtEventLoop& loop_;
};

}  // namespace veltrix
