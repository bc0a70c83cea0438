#include "station/settings_binding.h"

#include "common/neutral_text.h"
#include "platform/error_convention.h"

namespace veltrix {

void SettingsBinding::Load() {
    for (const Setting& setting : SettingsTable()) SkippingErrors([&] { LoadOne(setting); });
}

void SettingsBinding::LoadOne(const Setting& setting) {
    const std::string stored = setting.readBack
                                   ? store_.GetSetting(setting.section, setting.key, setting.defaultText)
                                   : std::string(setting.defaultText);
    if (setting.kind == SettingKind::Option) {
        BindOption(setting, stored);
        return;
    }
    TextBox& box = controls_.Text(setting.control);
    box.SetText(stored);
    switch (setting.kind) {
        case SettingKind::Numeric:
            numbers_[std::string(setting.control)] = ValNeutral(setting.defaultText);
            box.OnEntry = [this, &setting] { NumericKeyUp(setting); };
            if (!(setting.throughHandler ? NumericKeyUp(setting) : TakeNumber(setting))) RunAction(setting);
            break;
        case SettingKind::Clamped: {
            const auto& clamp = clamps_.find(setting.control)->second;
            box.OnEntry = [this, &setting, &clamp] { Save(setting, clamp()); };
            box.SetText(clamp());
            break;
        }
        default:
            BindText(setting, box);
            break;
    }
}

void SettingsBinding::BindOption(const Setting& setting, const std::string& stored) {
    CheckBox& box = controls_.Check(setting.control);
    box.OnClick = [this, &setting, &box](MouseButton) {
        Save(setting, std::to_string(box.Value()));
        RunAction(setting);
    };
    box.SetValue(ValNeutral(stored) >= 1 ? 1 : 0);
    RunAction(setting);
}

void SettingsBinding::BindText(const Setting& setting, TextBox& box) {
    box.OnEntry = [this, &setting, &box] {
        const auto clean = cleanings_.find(setting.control);
        Save(setting, clean == cleanings_.end() ? box.Text() : clean->second(box.Text()));
        RunAction(setting);
    };
    RunAction(setting);
}

/// The two checks of a numeric box. A good value is put in force; false for another.
bool SettingsBinding::CheckNumber(const Setting& setting) {
    TextBox& box = controls_.Text(setting.control);
    const CheckedNumber number = ValidateNumber(box, setting.mask);
    if (!number.good || !ValidateRange(box, setting.low, setting.high)) return false;
    numbers_[std::string(setting.control)] = number.value;
    return true;
}

bool SettingsBinding::TakeNumber(const Setting& setting) {
    if (!CheckNumber(setting)) return false;
    RunAction(setting);
    return true;
}

bool SettingsBinding::NumericKeyUp(const Setting& setting) {
    if (!CheckNumber(setting)) return false;
    const std::string text = GeneralNumber(Number(setting.control));
    controls_.Text(setting.control).SetText(text);
    RunAction(setting);
    Save(setting, text);
    return true;
}

void SettingsBinding::SetNumber(std::string_view control, double value, std::string_view text) {
    numbers_[std::string(control)] = value;
    for (const Setting& setting : SettingsTable())
        if (setting.control == control) Save(setting, text);
}

void SettingsBinding::Save(const Setting& setting, std::string_view value) {
    store_.SaveSetting(setting.section, setting.key, value);
}

void SettingsBinding::RunAction(const Setting& setting) {
    const auto action = actions_.find(setting.control);
    if (action != actions_.end()) action->second();
}

}  // namespace veltrix
