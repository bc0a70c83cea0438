#include "window/bindings.h"

#include <stdexcept>
#include <utility>

#include "window/captions.h"

namespace veltrix {

Bindings::Bindings(ControlSet& controls, std::function<void(const std::function<void()>&)> run)
    : controls_(controls), run_(std::move(run)) {}

Bindings::~Bindings() {
    for (const auto& control : controls_.All())
        if (bound_.contains(control.get())) control->OnShow = nullptr;
}

void Bindings::Watch(Control& control, std::function<void()> refresh) {
    if (bound_.contains(&control)) throw std::logic_error(control.Name() + " is shown twice");
    const std::size_t number = screen_.Add(std::move(refresh));
    bound_[&control] = number;
    control.OnShow = [this, number] { screen_.Want(number); };
}

void Bindings::Bind(Control& control, QWidget& widget, std::function<void()> refresh) {
    widget.setObjectName(ToText(control.Name()));
    Watch(control, [&control, &widget, refresh = std::move(refresh)] {
        if (widget.isHidden() == control.Visible()) widget.setVisible(control.Visible());
        if (const QString tip = PlainToolTip(control.ToolTipText()); tip != widget.toolTip())
            widget.setToolTip(tip);
        if (refresh) refresh();
    });
}

void Bindings::Also(Control& control, std::function<void()> more) {
    screen_.Append(bound_.at(&control), std::move(more));
}

void Bindings::Act(Control& control, const std::function<void()>& action) {
    run_(action);
    screen_.Want(bound_.at(&control));
    screen_.Flush();
}

std::vector<std::string> Bindings::Unbound() const {
    std::vector<std::string> names;
    for (const auto& control : controls_.All())
        if (!bound_.contains(control.get())) names.push_back(control->Name());
    return names;
}

}  // namespace veltrix
