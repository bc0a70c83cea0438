#pragma once
// All controls of the main form, by name.

#include <string_view>

#include "display/picture_box.h"
#include "platform/controls.h"

namespace veltrix {

/// Makes the form's controls from one table and finds them by name. Owned by the form; what works on a
/// control takes its reference once.
class FormControls {
  public:
    /// Surfaces print with `glyphs`.
    explicit FormControls(Glyphs& glyphs);

    /// All controls by name, for who is given names from outside.
    ControlSet& All() { return set_; }

    /// The main form, and the splash form that stands for the program at start.
    FormControl& Form() { return form_; }
    FormControl& Splash() { return splash_; }
    /// The control of that name. REQUIRES that the form has it and that it is of the kind asked for.
    TextBox& Text(std::string_view name) { return Get<TextBox>(name); }
    Label& Caption(std::string_view name) { return Get<Label>(name); }
    CheckBox& Check(std::string_view name) { return Get<CheckBox>(name); }
    ListBox& List(std::string_view name) { return Get<ListBox>(name); }
    TabStrip& Tabs(std::string_view name) { return Get<TabStrip>(name); }
    Button& Push(std::string_view name) { return Get<Button>(name); }
    Marker& Mark(std::string_view name) { return Get<Marker>(name); }
    Shape& Figure(std::string_view name) { return Get<Shape>(name); }
    LineShape& Line(std::string_view name) { return Get<LineShape>(name); }
    Menu& PopUp(std::string_view name) { return Get<Menu>(name); }
    Frame& Group(std::string_view name) { return Get<Frame>(name); }
    PictureBox& Picture(std::string_view name) { return Get<PictureBox>(name); }

  private:
    template <class T>
    T& Get(std::string_view name) {
        return dynamic_cast<T&>(set_.Require(name));
    }

    ControlSet set_;
    FormControl& form_;
    FormControl& splash_;
};

}  // namespace veltrix
