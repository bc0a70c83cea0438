#pragma once
// Lists: one that says why it is empty, and a drop-down.

#include <QComboBox>
#include <QListWidget>
#include <functional>

#include "platform/controls.h"

namespace veltrix {

/// Shows a list box. A click, or the enter key, chooses an entry; a list that nothing chooses from can still
/// be read and scrolled.
class ListView final : public QListWidget {
  public:
    /// `hint` stands in an empty list, in grey; `chosen` takes the number of the chosen entry.
    ListView(QString hint, std::function<void(int)> chosen, QWidget* parent = nullptr);

    /// Takes over the entries, the choice, and whether the user may choose.
    void Show(const ListBox& box);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Choose(int row);
    /// The size for so many characters and lines.
    QSize ForText(QSize text) const;

    QString hint_;
    std::function<void(int)> chosen_;
    std::vector<std::string> shown_;
    int shownIndex_ = -1;
    bool choosable_ = false;
};

/// Shows a combo box; disabled while nothing takes the choice and nothing fills it.
class DropDown final : public QComboBox {
  public:
    /// `dropDown` runs before the list opens, `closeUp` after it has closed and a choice was taken.
    DropDown(std::function<void()> dropDown, std::function<void()> closeUp, QWidget* parent = nullptr);

    /// An open list is left as it is, so that it does not change under the mouse; false then.
    bool Show(const ListBox& box);

    void showPopup() override;
    void hidePopup() override;

  private:
    std::function<void()> dropDown_;
    std::function<void()> closeUp_;
    std::vector<std::string> shown_;
};

}  // namespace veltrix
