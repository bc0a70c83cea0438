#include "window/window_message_box.h"

#include <QApplication>
#include <QPushButton>

#include "window/captions.h"

namespace veltrix {

namespace {

constexpr int AbortRetryIgnore = 2;  // any other number of buttons only informs

}  // namespace

int WindowMessageBox::Ask(const Question& question) {
    // Sockets go on while a box stands; what fails in them then is in the log, and must not pile up boxes.
    if (loop_.TimersHeld()) return reply::Ignore;
    const QtEventLoop::HoldTimers held(loop_);
    QMessageBox box(QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setWindowTitle(ToText(question.title));
    box.setText(ToText(question.text));
    if (question.lButtons != AbortRetryIgnore) {
        box.setIcon(QMessageBox::Information);
        box.setStandardButtons(QMessageBox::Ok);
        box.exec();
        return reply::Ok;
    }
    box.setIcon(QMessageBox::Warning);
    box.setStandardButtons(QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore);
    box.setDefaultButton(QMessageBox::Ignore);
    box.setEscapeButton(QMessageBox::Ignore);
    switch (box.exec()) {
        case QMessageBox::Abort:
            return reply::Abort;
        case QMessageBox::Retry:
            return reply::Retry;
        default:
            return reply::Ignore;
    }
}

}  // namespace veltrix
