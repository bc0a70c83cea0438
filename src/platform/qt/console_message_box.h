#pragma once
// The message box of a station without a screen.

#include "platform/message_box.h"
#include "platform/qt/console_lines.h"

namespace veltrix {

/// Goes on whatever happens, and says what happened.
class ConsoleMessageBox final : public MessageBox {
  public:
    /// REQUIRES that `console` outlives this.
    explicit ConsoleMessageBox(ConsoleLines& console) : console_(console) {}
    int Ask(const Question& question) override;

  private:
    ConsoleLines& console_;
};

}  // namespace veltrix
