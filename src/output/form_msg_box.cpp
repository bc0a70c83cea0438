#include "output/form_msg_box.h"

namespace veltrix {

std::string FormMsgBox::aGetVersion() {
    return "23-04-2003 Form Message Box            \tFormMsgBox.frm";
}

void FormMsgBox::Init(const std::string& text, int, const std::string& title) {
    form.SetCaption(title);
    Label1.SetCaption(text);
}

void FormMsgBox::Unload() {
    form.SetCaption("");
    Label1.SetCaption("");
    result_ = -1;
}

}  // namespace veltrix
