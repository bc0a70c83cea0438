#pragma once
// The lasting choices of the user: every key of the settings store that mirrors a control, and the two checks
// that numeric boxes share.

#include <limits>
#include <span>
#include <string_view>

#include "platform/controls.h"

namespace veltrix {

/// How a setting is read from its control and checked.
enum class SettingKind {
    Text,     ///< kept as typed
    Numeric,  ///< a numeric box: checked by mask and range before it is taken
    Clamped,  ///< a whole number that its handler limits
    Option    ///< a check box: 0 or 1
};

/// One key of the store and the control that mirrors it.
struct Setting {
    std::string_view section;
    std::string_view key;
    SettingKind kind;
    std::string_view defaultText;
    std::string_view control;
    std::string_view mask = "";  ///< of a numeric box; "0" takes whole numbers only
    double low = -std::numeric_limits<double>::max();
    double high = std::numeric_limits<double>::max();
    bool readBack = true;         ///< false: written at each change, deliberately never read
    bool throughHandler = false;  ///< true: at start, too, the value goes through the box's key-up handler
};

/// All settings that mirror a control, in the order in which they are read at start.
std::span<const Setting> SettingsTable();

/// What a numeric box says.
struct CheckedNumber {
    double value = 0;  ///< the number in the box, good or not
    bool good = false;
};

/// Reads the number in `control` and tests that `mask` can carry it: the number formatted by the mask and
/// read back must be the same, and a lone "-" is none. The text turns white when good and red when refused:
/// the box itself is the error message.
CheckedNumber ValidateNumber(TextBox& control, std::string_view mask);

/// Tests low <= number in `control` <= high, with the same colours.
bool ValidateRange(TextBox& control, double low, double high);

}  // namespace veltrix
