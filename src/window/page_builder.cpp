#include "window/page_builder.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>
#include <string>

#include "display/picture_box.h"
#include "window/captions.h"
#include "window/control_widgets.h"
#include "window/surface_view.h"

namespace veltrix {

namespace {

constexpr int PageMargin = 8;
constexpr int StripMargin = 3;
constexpr int RowSpacing = 5;
constexpr int ColumnSpacing = 8;

/// The widget itself, or those in it where it is a row of several.
QList<QWidget*> ItemsOf(QWidget& middle) {
    if (!middle.objectName().isEmpty()) return {&middle};
    return middle.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
}

/// Names a row's boxes after its label, and lets the label stand for the first of them.
void NameAfter(const QString& text, QLabel* label, QWidget& middle) {
    for (QWidget* const item : ItemsOf(middle)) {
        if (item->focusPolicy() == Qt::NoFocus) continue;
        if (!qobject_cast<QAbstractButton*>(item)) item->setAccessibleName(text);
        if (label && !label->buddy()) label->setBuddy(item);
    }
}

/// What takes the height that a page has to spare.
bool Grows(QWidget& middle) {
    return std::ranges::any_of(ItemsOf(middle), [](QWidget* item) {
        return qobject_cast<QAbstractItemView*>(item) || qobject_cast<QTabWidget*>(item) ||
               dynamic_cast<SurfaceView*>(item);
    });
}

}  // namespace

QWidget* PageBuilder::Page(std::string_view owner, int tab) {
    auto* const page = new QWidget;
    auto* const grid = new QGridLayout(page);
    // A page that is nothing but a strip of tabs stands close in the outer one.
    const std::vector<RowDesign>& rows = RowsOf(owner, tab);
    const std::string_view only = rows.size() == 1 && rows[0].middle.size() == 1 ? rows[0].middle[0] : "";
    const Control* const inner = bindings_.FindIf(only);
    const int margin = inner && inner->Kind() == ControlKind::Tabs ? StripMargin : PageMargin;
    grid->setContentsMargins(margin, margin + 2, margin, margin);
    grid->setVerticalSpacing(RowSpacing);
    grid->setHorizontalSpacing(ColumnSpacing);
    grid->setColumnStretch(1, 1);
    const bool remarks =
        std::ranges::any_of(rows, [](const RowDesign& design) { return !design.right.empty(); });
    int row = 0;
    bool filled = false;
    for (const RowDesign& design : rows) {
        AddRow(*grid, row, design, remarks);
        filled = filled || grid->rowStretch(row) > 0;
        ++row;
    }
    if (!filled) grid->setRowStretch(row, 1);
    return page;
}

void PageBuilder::AddRow(QGridLayout& grid, int row, const RowDesign& design, bool remarks) {
    const bool whole = design.left.empty() && design.right.empty();
    QWidget* const left = design.left.empty() ? nullptr : Item(design.left, false);
    QWidget* const middle = design.middle.empty() ? nullptr : Middle(design, whole);
    QWidget* const right = design.right.empty() ? nullptr : Item(design.right, false);
    const int from = left ? 1 : 0;
    // Boxes end in one line, whether a remark follows or not.
    const bool ends =
        right || (left && remarks && !design.toTheEnd && !qobject_cast<QAbstractButton*>(middle));
    if (left) grid.addWidget(left, row, 0, 1, middle ? 1 : 3);
    if (middle) grid.addWidget(middle, row, from, 1, (ends ? 2 : 3) - from);
    if (right) grid.addWidget(right, row, 2);
    if (!middle) return;
    if (left) NameAfter(TextOf(design.left), qobject_cast<QLabel*>(left), *middle);
    if (!Grows(*middle)) return;
    grid.setRowStretch(row, 1);
    if (left) grid.setAlignment(left, Qt::AlignTop);
}

QString PageBuilder::TextOf(std::string_view name) const {
    return name.front() == '=' ? ToText(std::string(name.substr(1)))
                               : ReadableCaption(bindings_.Find(name).Caption());
}

QWidget* PageBuilder::Middle(const RowDesign& design, bool wraps) {
    if (design.middle.size() == 1) return Item(design.middle.front(), wraps);
    auto* const row = new QWidget;
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    for (const std::string_view name : design.middle)
        layout->addWidget(Item(name, false), name.front() == ':' ? 0 : 1);
    return row;
}

QWidget* PageBuilder::Item(std::string_view name, bool wraps) {
    if (name.front() == '=') {
        auto* const label = new QLabel(TextOf(name));
        label->setTextFormat(Qt::PlainText);
        return label;
    }
    const bool narrow = name.front() == ':';
    QWidget* const made = Make(narrow ? name.substr(1) : name, wraps);
    if (narrow) {
        static_cast<TextEdit*>(made)->MakeNarrow();
        made->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }
    return made;
}

QWidget* PageBuilder::Make(std::string_view name, bool wraps) {
    Control& control = bindings_.Find(name);
    switch (control.Kind()) {
        case ControlKind::Text:
            return MakeText(bindings_, dynamic_cast<TextBox&>(control));
        case ControlKind::Check:
            return MakeCheck(bindings_, dynamic_cast<CheckBox&>(control));
        case ControlKind::Button:
            return MakeButton(bindings_, dynamic_cast<Button&>(control));
        case ControlKind::List:
            return MakeList(bindings_, dynamic_cast<ListBox&>(control));
        case ControlKind::Combo:
            return MakeDropDown(bindings_, dynamic_cast<ListBox&>(control));
        case ControlKind::Tabs:
            return Tabs(dynamic_cast<TabStrip&>(control));
        case ControlKind::Picture:
            return new SurfaceView(bindings_, dynamic_cast<PictureBox&>(control));
        case ControlKind::Frame:
            return Group(dynamic_cast<Frame&>(control));
        default:
            return MakeLabel(bindings_, control, wraps);
    }
}

QTabWidget* PageBuilder::Tabs(TabStrip& strip) {
    auto* const tabs = new QTabWidget;
    tabs->setUsesScrollButtons(false);
    int number = 0;
    for (const std::string& caption : strip.Tabs())
        tabs->addTab(Page(strip.Name(), number++), WithoutMnemonics(ReadableCaption(caption)));
    BindTabs(bindings_, strip, *tabs);
    return tabs;
}

QWidget* PageBuilder::Group(Frame& frame) {
    auto* const group = new QGroupBox;
    auto* const layout = new QVBoxLayout(group);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(Page(frame.Name()));
    // A check box of the same caption at its top is the group's title.
    const RowDesign& first = RowsOf(frame.Name()).front();
    const bool titled =
        first.middle.empty() || bindings_.Find(first.middle.front()).Caption() != frame.Caption();
    bindings_.Bind(frame, *group, [group, titled, &frame] {
        if (titled) group->setTitle(WithoutMnemonics(ReadableCaption(frame.Caption()).trimmed()));
    });
    return group;
}

}  // namespace veltrix
