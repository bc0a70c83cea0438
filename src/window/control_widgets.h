#pragma once
// Makes the widget of a control, by its kind.

#include <QLabel>
#include <QTabWidget>
#include <QWidget>

#include "window/bindings.h"
#include "window/list_views.h"
#include "window/text_edit.h"

namespace veltrix {

/// Each of these makes a widget, bound to its control, that whoever lays it out comes to own.
TextEdit* MakeText(Bindings& bindings, TextBox& box);
/// A label that the user can read only; more than one line long where `wraps`.
QLabel* MakeLabel(Bindings& bindings, Control& label, bool wraps = false);
QWidget* MakeCheck(Bindings& bindings, CheckBox& box);
QWidget* MakeButton(Bindings& bindings, Button& button);
ListView* MakeList(Bindings& bindings, ListBox& box);
QWidget* MakeDropDown(Bindings& bindings, ListBox& box);

/// Ties a strip of tabs to the pages that were added to it in the order of the model's tabs.
void BindTabs(Bindings& bindings, TabStrip& strip, QTabWidget& tabs);

}  // namespace veltrix
