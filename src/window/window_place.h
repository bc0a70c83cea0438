#pragma once
// Where the window stands on the desktop, from one run to the next.

#include <QString>
#include <QWidget>
#include <utility>

namespace veltrix {

/// Keeps place, size and maximised state of a window in a small file. Where the file cannot be read or
/// written, nothing is remembered.
class WindowPlace {
  public:
    /// An empty path keeps nothing.
    explicit WindowPlace(QString path) : path_(std::move(path)) {}

    /// Gives the window its last place, if that is still on a screen, else its usual size.
    void Restore(QWidget& window, QSize usual) const;
    void Keep(const QWidget& window) const;

  private:
    QString path_;
};

}  // namespace veltrix
