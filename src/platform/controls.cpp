#include "platform/controls.h"

#include <algorithm>
#include <cassert>
#include <stdexcept>

#include "common/letter_case.h"
#include "common/neutral_text.h"

namespace veltrix {

std::string_view KindName(ControlKind kind) {
    switch (kind) {
        case ControlKind::Form:
            return "form";
        case ControlKind::Frame:
            return "frame";
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
        case ControlKind::Picture:
            return "picture";
        case ControlKind::Marker:
            return "marker";
        case ControlKind::Shape:
            return "shape";
        case ControlKind::Line:
            return "line";
        case ControlKind::Menu:
            return "menu";
    }
    return "";
}

bool Control::ClickBy(MouseButton button) {
    if (!OnClick) return false;
    OnClick(button);
    return true;
}

bool Control::Mouse(const MouseEvent& event) {
    if (OnMouse) OnMouse(event);
    return OnMouse || AlwaysFollowsMouse();
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

bool Button::ClickBy(MouseButton button) {
    return button == MouseButton::Left && Control::ClickBy(button);
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

std::string ListBox::Chosen() const {
    return listIndex_ < 0 ? "" : entries_[static_cast<std::size_t>(listIndex_)];
}

void ListBox::Choose(std::string_view entry) {
    auto found = std::ranges::find(entries_, entry);
    if (found == entries_.end())
        found = std::ranges::find_if(
            entries_, [entry](const std::string& other) { return EqualIgnoringCase(other, entry); });
    SetListIndex(found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin()));
}

bool ListBox::Enter(std::string_view entry) {
    if (OnDropDown) OnDropDown();
    bool bTaken = std::ranges::find(entries_, entry) != entries_.end();
    if (bTaken) {
        Choose(entry);
        if (OnClick) OnClick(MouseButton::Left);
    } else {
        bTaken = OnOther && OnOther(entry);
    }
    if (OnCloseUp) OnCloseUp();
    return bTaken;
}

bool ListBox::ClickBy(MouseButton button) {
    if (OnDropDown && button == MouseButton::Left) {
        OnDropDown();
        return true;
    }
    return button == MouseButton::Left && listIndex_ >= 0 && Control::ClickBy(button);
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

std::optional<Bitmap> Marker::Snapshot() const {
    return Bitmap{Side, Side, std::vector<ColourValue>(std::size_t{Side} * Side, BackColor())};
}

std::optional<ColourValue> Marker::PixelAt(double x, double y) const {
    const bool inside = x >= 0 && x < Side && y >= 0 && y < Side;
    return inside ? BackColor() : -1;
}

std::vector<std::string> Shape::Lines() const {
    return {GeneralNumber(Left()) + " " + GeneralNumber(Top()) + " " + GeneralNumber(width_) + " " +
            GeneralNumber(height_) + (Visible() ? " 1" : " 0")};
}

std::vector<std::string> LineShape::Lines() const {
    return {GeneralNumber(ends_.X1) + " " + GeneralNumber(ends_.Y1) + " " + GeneralNumber(ends_.X2) + " " +
            GeneralNumber(ends_.Y2) + (Visible() ? " 1" : " 0")};
}

Control* ControlSet::Find(std::string_view name) const {
    const auto found = byName_.find(LowerCase(name));
    return found == byName_.end() ? nullptr : found->second;
}

Control& ControlSet::Require(std::string_view name) const {
    Control* const control = Find(name);
    if (!control) throw std::logic_error("the form has no control named " + std::string(name));
    return *control;
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
