#include "platform/qt/console_message_box.h"

namespace veltrix {

namespace {

/// One line; characters that would steer a terminal are left out.
std::string OneLine(std::string_view text) {
    std::string line;
    for (const char c : text) {
        const bool isControl = static_cast<unsigned char>(c) < ' ' || c == '\x7F';
        if (!isControl) line += c;
    }
    return line;
}

}  // namespace

int ConsoleMessageBox::Ask(const Question& question) {
    if (question.text != last_) {
        last_ = question.text;
        out_ << OneLine(question.title + ": " + question.text) + "\n" << std::flush;
    }
    return reply::Ignore;
}

}  // namespace veltrix
