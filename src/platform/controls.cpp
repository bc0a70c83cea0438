#include "platform/controls.h"

#include <algorithm>
#include <cassert>

#include "common/letter_case.h"
#include "common/neutral_text.h"

namespace veltrix {

std::string_view KindName(ControlKind kind) {
    switch (kind) {
        case ControlKind::Form:
            return "form";
        case ControlKind::Text:
            return "text";
        case ControlKind::Label:
            return "label";
        case ControlKind::Check:
            return "check";
        case ControlKind::Button:
            return "button";
        case ControlKind::List:
            return "list";
        case ControlKind::Combo:
            return "combo";
        case ControlKind::Tabs:
            return "tabs";
        case ControlKind::Marker:
            return "marker";
    }
    return "";
}

bool Control::ClickBy(MouseButton button) {
    if (!OnClick) return false;
    OnClick(button);
    return true;
}

bool Control::Mouse(const MouseEvent& event) {
    if (!OnMouse) return false;
    OnMouse(event);
    return true;
}

bool TextBox::Enter(std::string_view text) {
    if (!OnEntry) return false;
    SetText(std::string(text));
    OnEntry();
    return true;
}

bool CheckBox::Enter(std::string_view text) {
    if (text != "0" && text != "1") return false;
    SetValue(text == "1" ? 1 : 0);
    if (OnClick) OnClick(MouseButton::Left);
    return true;
}

bool CheckBox::ClickBy(MouseButton button) {
    return button == MouseButton::Left && Enter(Checked() ? "0" : "1");
}

void ListBox::SetEntries(std::vector<std::string> entries) {
    entries_ = std::move(entries);
    listIndex_ = -1;
    Changed();
}

void ListBox::Add(std::string entry) {
    entries_.push_back(std::move(entry));
    Changed();
}

bool ListBox::Enter(std::string_view entry) {
    const auto found = std::ranges::find(entries_, entry);
    if (found == entries_.end()) return false;
    SetListIndex(static_cast<int>(found - entries_.begin()));
    if (OnClick) OnClick(MouseButton::Left);
    return true;
}

bool TabStrip::Enter(std::string_view caption) {
    const auto found = std::ranges::find(tabs_, caption);
    if (found == tabs_.end()) return false;
    SetTab(static_cast<int>(found - tabs_.begin()));
    if (OnClick) OnClick(MouseButton::Left);
    return true;
}

std::vector<std::string> Marker::Lines() const {
    return {GeneralNumber(Left()) + " " + GeneralNumber(Top()) + " " + std::to_string(BackColor()) +
            (Visible() ? " 1" : " 0")};
}

Control* ControlSet::Find(std::string_view name) const {
    const auto found = byName_.find(LowerCase(name));
    return found == byName_.end() ? nullptr : found->second;
}

void ControlSet::Keep(std::unique_ptr<Control> control) {
    [[maybe_unused]] const bool isNew = byName_.emplace(LowerCase(control->Name()), control.get()).second;
    assert(isNew);
    all_.push_back(std::move(control));
}

std::string ElementName(std::string_view array, int index) {
    return std::string(array) + "(" + std::to_string(index) + ")";
}

}  // namespace veltrix
