#pragma once
// FormMsgBox: a small form with one label, kept for error messages. Nothing shows it at present.

#include <string>

#include "platform/controls.h"

namespace veltrix {

/// The form of the message box, as far as others see it. Owned by the error log.
class FormMsgBox {
  public:
    /// The version text of the form.
    static std::string aGetVersion();
    /// The form's result, -1 from its loading on.
    int xResult() const { return result_; }
    /// Sets the caption to `title` and the label to `text`. The form has no buttons of its own.
    void Init(const std::string& text, int buttons, const std::string& title);
    /// Takes everything back to the state of a form just loaded.
    void Unload();

    /// The form, whose caption is the title, and the label with the text.
    FormControl form{"FormMsgBox"};
    Label Label1{"Label1"};

  private:
    int result_ = -1;
};

}  // namespace veltrix
