#pragma once
// Binds the settings store to the form's controls: each setting is read into its control at start, and each
// change of the control by the user is saved at once.

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "detection/settings_table.h"
#include "platform/settings_store.h"
#include "station/form_controls.h"

namespace veltrix {

/// Walks the settings table. Owned by the form.
class SettingsBinding {
  public:
    SettingsBinding(FormControls& controls, SettingsStore& store) : controls_(controls), store_(store) {}

    /// What a setting requires beyond being stored: runs after its value was taken, at start and at each
    /// change by the user. Settings are named by their control. Set before Load().
    void WhenTaken(std::string_view control, std::function<void()> action) {
        actions_[std::string(control)] = std::move(action);
    }
    /// The handler of a Clamped setting: takes the box's text and returns the text to save. Set before
    /// Load().
    void ClampWith(std::string_view control, std::function<std::string()> clamp) {
        clamps_[std::string(control)] = std::move(clamp);
    }
    /// How a Text setting is changed on its way to the store. Set before Load().
    void CleanWith(std::string_view control, std::function<std::string(std::string)> clean) {
        cleanings_[std::string(control)] = std::move(clean);
    }

    /// Reads every setting into its control, in the order of the table, and binds the controls' handlers. A
    /// stored text that its box refuses stays there in red, and the default is in force. A setting whose
    /// action fails does not keep the others from being read.
    void Load();

    /// Value of a numeric setting in force. REQUIRES the control of a Numeric setting, and Load().
    double Number(std::string_view control) const { return numbers_.find(control)->second; }
    /// Puts a value in force that came from elsewhere than the setting's own box, and saves it as `text`.
    void SetNumber(std::string_view control, double value, std::string_view text);

  private:
    template <class T>
    using ByControl = std::map<std::string, T, std::less<>>;

    void LoadOne(const Setting& setting);
    void BindOption(const Setting& setting, const std::string& stored);
    void BindText(const Setting& setting, TextBox& box);
    bool CheckNumber(const Setting& setting);
    bool TakeNumber(const Setting& setting);
    bool NumericKeyUp(const Setting& setting);
    void Save(const Setting& setting, std::string_view value);
    void RunAction(const Setting& setting);

    FormControls& controls_;
    SettingsStore& store_;
    ByControl<double> numbers_;
    ByControl<std::function<void()>> actions_;
    ByControl<std::function<std::string()>> clamps_;
    ByControl<std::function<std::string(std::string)>> cleanings_;
};

}  // namespace veltrix
