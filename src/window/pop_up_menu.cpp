#include "window/pop_up_menu.h"

#include <QAction>
#include <string>

#include "window/captions.h"

namespace veltrix {

namespace {

constexpr char Separator[] = "-";

}  // namespace

PopUpMenu::PopUpMenu(Bindings& bindings, Menu& menu, SurfaceView& view) : QMenu(&view), menu_(menu) {
    setObjectName(ToText(menu.Name()));
    for (const std::string& entry : menu.Entries()) AddEntry(bindings, bindings.Find(entry));
    bindings.Watch(menu, [this] { setTitle(WithoutMnemonics(ReadableCaption(menu_.Caption()))); });
    menu.OnPopUp = [this, &view] { popup(view.mapToGlobal(view.InWidget(menu_.Left(), menu_.Top()))); };
}

PopUpMenu::~PopUpMenu() {
    menu_.OnPopUp = nullptr;
}

void PopUpMenu::AddEntry(Bindings& bindings, Control& button) {
    QAction* const action = addAction(QString());
    action->setObjectName(ToText(button.Name()));
    connect(action, &QAction::triggered, &bindings,
            [&bindings, &button] { bindings.Act(button, [&button] { button.ClickBy(MouseButton::Left); }); });
    bindings.Watch(button, [action, &button] {
        const bool separates = button.Caption() == Separator;
        action->setSeparator(separates);
        // A text would be written on the line.
        action->setText(separates ? QString() : WithoutMnemonics(ReadableCaption(button.Caption())));
        action->setEnabled(static_cast<bool>(button.OnClick));
        action->setVisible(button.Visible());
    });
}

}  // namespace veltrix
