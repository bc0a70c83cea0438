#pragma once
// The message box of a station without a screen.

#include <iostream>

#include "platform/message_box.h"

namespace veltrix {

/// Goes on whatever happens, and says what happened.
class ConsoleMessageBox final : public MessageBox {
  public:
    explicit ConsoleMessageBox(std::ostream& out = std::cerr) : out_(out) {}
    int Ask(const Question& question) override;

  private:
    std::ostream& out_;
    std::string last_;
};

}  // namespace veltrix
