#include "window/control_widgets.h"

#include <QCheckBox>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabBar>
#include <algorithm>
#include <string>
#include <string_view>

#include "window/captions.h"
#include "window/mouse_relay.h"
#include "window/palette.h"

namespace veltrix {

namespace {

struct Hint {
    std::string_view list;
    const char* text;
};

constexpr Hint Hints[] = {
    {"List1", "nothing to report"},
    {"lstOnline", "no station on line"},
    {"Dir1", "no folder"},
    {"File1", "no log in this folder"},
    {"File2", "no picture in this folder"},
    {"File3", "no picture in this folder"},
};

QString HintOf(std::string_view list) {
    const auto* const found = std::ranges::find(Hints, list, &Hint::list);
    return found == std::end(Hints) ? QString() : QString::fromLatin1(found->text);
}

/// Chooses by number, since entries may be equal.
void Choose(Bindings& bindings, ListBox& box, int index) {
    bindings.Act(box, [&box, index] {
        if (index < 0 || index >= static_cast<int>(box.Entries().size())) return;
        box.SetListIndex(index);
        if (box.OnClick) box.OnClick(MouseButton::Left);
    });
}

}  // namespace

TextEdit* MakeText(Bindings& bindings, TextBox& box) {
    auto* const edit = new TextEdit;
    QObject::connect(edit, &QLineEdit::textEdited, &bindings, [&bindings, &box](const QString& text) {
        bindings.Act(box, [&] { box.Enter(text.toStdString()); });
    });
    new MouseRelay(bindings, box, *edit, MouseRelay::Widget::NeedsMouse);
    bindings.Bind(box, *edit, [edit, &box] { edit->Show(box); });
    return edit;
}

QLabel* MakeLabel(Bindings& bindings, Control& label, bool wraps) {
    auto* const shown = new QLabel;
    shown->setTextFormat(Qt::PlainText);
    shown->setWordWrap(wraps);
    new MouseRelay(bindings, label, *shown, MouseRelay::Widget::LeavesMouse);
    bindings.Bind(label, *shown, [shown, &label] {
        const QString caption = ReadableCaption(label.Caption()).trimmed();
        shown->setText(shown->buddy() ? WithoutMnemonics(caption) : caption);
        ShowColours(*shown, {QPalette::WindowText, QPalette::Window}, label.ForeColor(), label.BackColor(),
                    false);
    });
    return shown;
}

QWidget* MakeCheck(Bindings& bindings, CheckBox& box) {
    auto* const check = new QCheckBox;
    QObject::connect(check, &QCheckBox::clicked, &bindings,
                     [&bindings, &box] { bindings.Act(box, [&box] { box.ClickBy(MouseButton::Left); }); });
    bindings.Bind(box, *check, [check, &box] {
        check->setText(WithoutMnemonics(ReadableCaption(box.Caption()).simplified()));
        check->setChecked(box.Checked());
    });
    return check;
}

QWidget* MakeButton(Bindings& bindings, Button& button) {
    auto* const push = new QPushButton;
    push->setAutoDefault(false);
    QObject::connect(push, &QPushButton::clicked, &bindings, [&bindings, &button] {
        bindings.Act(button, [&button] { button.ClickBy(MouseButton::Left); });
    });
    bindings.Bind(button, *push, [push, &button] {
        push->setText(WithoutMnemonics(ReadableCaption(button.Caption())));
        push->setEnabled(static_cast<bool>(button.OnClick));
    });
    return push;
}

ListView* MakeList(Bindings& bindings, ListBox& box) {
    auto* const list =
        new ListView(HintOf(box.Name()), [&bindings, &box](int row) { Choose(bindings, box, row); });
    bindings.Bind(box, *list, [list, &box] { list->Show(box); });
    return list;
}

QWidget* MakeDropDown(Bindings& bindings, ListBox& box) {
    const auto run = [&bindings, &box](const std::function<void()>& handler) {
        if (handler) bindings.Act(box, handler);
    };
    auto* const list =
        new DropDown([run, &box] { run(box.OnDropDown); }, [run, &box] { run(box.OnCloseUp); });
    QObject::connect(list, &QComboBox::activated, &bindings,
                     [&bindings, &box](int index) { Choose(bindings, box, index); });
    bindings.Bind(box, *list, [list, &box] {
        if (!list->Show(box)) box.OnShow();
    });
    return list;
}

void BindTabs(Bindings& bindings, TabStrip& strip, QTabWidget& tabs) {
    const auto enter = [&bindings, &strip](int tab) {
        if (tab < 0 || tab >= static_cast<int>(strip.Tabs().size())) return;
        bindings.Act(strip, [&strip, tab] { strip.Enter(strip.Tabs()[static_cast<std::size_t>(tab)]); });
    };
    QObject::connect(&tabs, &QTabWidget::currentChanged, &bindings, enter);
    // A click on the open tab is a click on the strip all the same.
    QObject::connect(&tabs, &QTabWidget::tabBarClicked, &bindings, [&tabs, enter](int tab) {
        if (tab == tabs.currentIndex()) enter(tab);
    });
    bindings.Bind(strip, tabs, [&tabs, &strip] {
        const QSignalBlocker quiet(&tabs);
        tabs.setCurrentIndex(strip.Tab());
    });
}

}  // namespace veltrix
