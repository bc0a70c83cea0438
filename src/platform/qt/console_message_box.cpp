#include "platform/qt/console_message_box.h"

namespace veltrix {

int ConsoleMessageBox::Ask(const Question& question) {
    console_.Say(ConsoleLines::Level::Error, question.title + ": " + question.text);
    return reply::Ignore;
}

}  // namespace veltrix
