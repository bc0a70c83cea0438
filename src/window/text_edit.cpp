#include "window/text_edit.h"

#include <algorithm>

#include "window/captions.h"
#include "window/palette.h"

namespace veltrix {

namespace {

constexpr int LeastCharacters = 5;
constexpr int UsualCharacters = 9;
constexpr int RoomAround = 14;  // pixels of frame and margins

int Size(const QString& text) {
    return static_cast<int>(text.size());
}

}  // namespace

int CursorAfterRewrite(const QString& before, int cursor, const QString& after) {
    const int behind = Size(before) - cursor;
    if (after.startsWith(before.left(cursor))) return cursor;
    if (after.endsWith(before.right(behind))) return Size(after) - behind;
    return std::min(cursor, Size(after));
}

void TextEdit::Show(const TextBox& box) {
    const QString shown = ToText(box.Text());
    if (text() != shown) {
        const int cursor = hasFocus() ? CursorAfterRewrite(text(), cursorPosition(), shown) : 0;
        setText(shown);
        setCursorPosition(cursor);
    }
    setReadOnly(!box.OnEntry);
    ShowColours(*this, {QPalette::Text, QPalette::Base}, box.ForeColor(), box.BackColor(), isReadOnly());
}

QSize TextEdit::sizeHint() const {
    return ForCharacters(UsualCharacters);
}

QSize TextEdit::minimumSizeHint() const {
    return ForCharacters(LeastCharacters);
}

QSize TextEdit::ForCharacters(int count) const {
    const QFontMetrics metrics = fontMetrics();
    const int wanted =
        narrow_ ? metrics.horizontalAdvance(text()) : count * metrics.horizontalAdvance(QLatin1Char('0'));
    return {wanted + RoomAround, QLineEdit::sizeHint().height()};
}

}  // namespace veltrix
