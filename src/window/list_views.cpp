#include "window/list_views.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QListView>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "window/captions.h"

namespace veltrix {

namespace {

constexpr QSize Usual(30, 6);  // characters and lines
constexpr QSize Least(16, 2);

}  // namespace

ListView::ListView(QString hint, std::function<void(int)> chosen, QWidget* parent)
    : QListWidget(parent), hint_(std::move(hint)), chosen_(std::move(chosen)) {
    setUniformItemSizes(true);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { Choose(row(item)); });
}

void ListView::Show(const ListBox& box) {
    choosable_ = static_cast<bool>(box.OnClick);
    setSelectionMode(choosable_ ? QAbstractItemView::SingleSelection : QAbstractItemView::NoSelection);
    const std::vector<std::string>& entries = box.Entries();
    const bool renewed = shown_ != entries;
    if (renewed) {
        const bool grown =
            shown_.size() < entries.size() && std::equal(shown_.begin(), shown_.end(), entries.begin());
        if (!grown) clear();
        for (std::size_t i = grown ? shown_.size() : 0; i < entries.size(); ++i) {
            addItem(ToText(entries[i]));
            item(count() - 1)->setToolTip(PlainToolTip(entries[i]));  // the whole of a line that is cut off
        }
        shown_ = entries;
        viewport()->update();
    }
    // The keys may have moved on from the chosen entry: that is the user's, until the model changes.
    if (choosable_ && (renewed || shownIndex_ != box.ListIndex())) setCurrentRow(box.ListIndex());
    shownIndex_ = box.ListIndex();
}

void ListView::Choose(int row) {
    if (!choosable_ || row < 0) return;
    shownIndex_ = row;
    chosen_(row);
}

void ListView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Choose(currentRow());
    else
        QListWidget::keyPressEvent(event);
}

void ListView::paintEvent(QPaintEvent* event) {
    QListWidget::paintEvent(event);
    if (count() > 0 || hint_.isEmpty()) return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(4, 2, -4, -2), Qt::AlignCenter | Qt::TextWordWrap, hint_);
}

QSize ListView::sizeHint() const {
    return ForText(Usual);
}

QSize ListView::minimumSizeHint() const {
    return ForText(Least);
}

QSize ListView::ForText(QSize text) const {
    const int frame = 2 * frameWidth();
    return {fontMetrics().averageCharWidth() * text.width() + frame,
            fontMetrics().lineSpacing() * text.height() + frame + 4};
}

DropDown::DropDown(std::function<void()> dropDown, std::function<void()> closeUp, QWidget* parent)
    : QComboBox(parent), dropDown_(std::move(dropDown)), closeUp_(std::move(closeUp)) {
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(6);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

bool DropDown::Show(const ListBox& box) {
    if (view()->isVisible()) return false;
    setEnabled(box.OnClick || box.OnDropDown);
    if (shown_ != box.Entries()) {
        shown_ = box.Entries();
        clear();
        for (const std::string& entry : shown_) addItem(ToText(entry));
        // Places that nobody has are nothing to choose.
        if (auto* const list = qobject_cast<QListView*>(view()))
            for (int i = 0; i < count(); ++i) list->setRowHidden(i, itemText(i).isEmpty());
    }
    setCurrentIndex(box.ListIndex());
    return true;
}

void DropDown::showPopup() {
    dropDown_();
    QComboBox::showPopup();
}

void DropDown::hidePopup() {
    const bool wasOpen = view()->isVisible();
    QComboBox::hidePopup();
    // The choice is told of only after this.
    if (wasOpen) QMetaObject::invokeMethod(this, closeUp_, Qt::QueuedConnection);
}

}  // namespace veltrix
