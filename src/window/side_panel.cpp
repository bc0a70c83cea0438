#include "window/side_panel.h"

#include <QLabel>
#include <QShortcut>
#include <QTabBar>
#include <QVBoxLayout>

namespace veltrix {

namespace {

constexpr int Margin = 8;

}  // namespace

SidePanel::SidePanel(Bindings& bindings, PageBuilder& builder, QWidget* parent)
    : QWidget(parent), builder_(builder) {
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, Margin, Margin, Margin);
    rows->setSpacing(2);
    auto* const tree = static_cast<QTabWidget*>(builder.Make("SSTab1"));
    tree->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    for (int tab = 0; tab < tree->count(); ++tab) {
        // Ctrl+1 and on open the tabs of the tree, wherever the focus is.
        auto* const key = new QShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + tab)), this);
        connect(key, &QShortcut::activated, &bindings, [tree, tab] { tree->setCurrentIndex(tab); });
    }
    rows->addWidget(tree);
    rows->addWidget(builder.Page("Interval"));
    auto* const lower = new QTabWidget;
    lower->setObjectName(QStringLiteral("lower"));
    lower->addTab(MakeLists(), QStringLiteral("Station"));
    lower->addTab(builder.Page("Replay"), QStringLiteral("Replay"));
    rows->addWidget(lower, 1);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

QSize SidePanel::sizeHint() const {
    return {minimumSizeHint().width(), QWidget::sizeHint().height()};
}

QWidget* SidePanel::MakeLists() {
    auto* const lists = new QWidget;
    auto* const rows = new QVBoxLayout(lists);
    rows->setContentsMargins(Margin, Margin, Margin, Margin);
    rows->setSpacing(3);
    const auto add = [&](const char* title, const char* name, int stretch) {
        auto* const label = new QLabel(QString::fromLatin1(title));
        QWidget* const list = builder_.Make(name);
        list->setAccessibleName(label->text());
        label->setBuddy(list);
        rows->addWidget(label);
        rows->addWidget(list, stretch);
    };
    add("Stations on line", "lstOnline", 1);
    add("Diagnostics", "List1", 1);
    return lists;
}

}  // namespace veltrix
