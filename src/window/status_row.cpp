#include "window/status_row.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QString>
#include <QStyle>

#include "health/status_texts.h"
#include "window/captions.h"
#include "window/palette.h"

namespace veltrix {

namespace {

constexpr int Margin = 8;
constexpr int Gap = 6;

/// A label that gives way, and takes the room its text needs where there is enough for all.
class StatusLabel final : public QLabel {
  public:
    StatusLabel() {
        setTextFormat(Qt::PlainText);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }

    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
        style()->drawItemText(&painter, rect(), Qt::AlignLeft | Qt::AlignVCenter, palette(), true, shown,
                              QPalette::WindowText);
    }
};

void BindCell(Bindings& bindings, Control& label, StatusLabel& shown) {
    bindings.Bind(label, shown, [&label, &shown] {
        shown.setText(ToText(label.Caption()));
        shown.setAccessibleName(shown.text());
        ShowColours(shown, {QPalette::WindowText, QPalette::Window}, label.ForeColor(), label.BackColor(),
                    false);
    });
}

}  // namespace

StatusRow::StatusRow(Bindings& bindings, QWidget* parent) : QWidget(parent) {
    auto* const cells = new QHBoxLayout(this);
    cells->setContentsMargins(Margin, 1, Margin, 1);
    cells->setSpacing(Gap);
    for (const std::string_view name : StatusLabels) {
        auto* const shown = new StatusLabel;
        cells->addWidget(shown, 1);
        BindCell(bindings, bindings.Find(name), *shown);
    }
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

}  // namespace veltrix
