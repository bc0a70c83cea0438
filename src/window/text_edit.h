#pragma once
// A line of text that follows its model while the user types.

#include <QLineEdit>

#include "platform/controls.h"

namespace veltrix {

/// Where the cursor goes when a text that the user is typing is written anew: it stays behind what stands
/// before it, else before what stands behind it, else as near to its place as the new text is long.
int CursorAfterRewrite(const QString& before, int cursor, const QString& after);

/// Shows a text box and takes what the user types, every key at once. It can be narrow, so that several stand
/// in one row.
class TextEdit final : public QLineEdit {
  public:
    explicit TextEdit(QWidget* parent = nullptr) : QLineEdit(parent) {}

    /// Shows text and colours of the model; read-only while nothing takes the user's entry.
    void Show(const TextBox& box);

    /// As wide as the text it shows, as for a sign that never changes.
    void MakeNarrow() { narrow_ = true; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  private:
    QSize ForCharacters(int count) const;

    bool narrow_ = false;
};

}  // namespace veltrix
