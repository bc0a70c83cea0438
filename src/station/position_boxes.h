#pragma once
// The position of the local station in its two sets of boxes: decimal degrees, and degrees, minutes and
// seconds.

#include <array>
#include <functional>

#include "station/settings_binding.h"

namespace veltrix {

/// Keeps both sets in step: each rewrites the other. Owned by the form. REQUIRES its making before the
/// settings are loaded, for it takes part in that.
class PositionBoxes {
  public:
    PositionBoxes(FormControls& controls, SettingsBinding& settings);

    /// The position has changed; `bDecimal` when the user typed it into a decimal box. May be empty.
    std::function<void(bool bDecimal)> OnMoved;

    /// Degrees, north positive.
    double HomeLatitude() const { return Home(latitude_); }
    /// Degrees, east positive.
    double HomeLongitude() const { return Home(longitude_); }

  private:
    struct Part {
        TextBox& box;
        double value = 0;  // in force; a text that the box refuses does not change it
    };
    /// One coordinate with its boxes.
    struct Axis {
        TextBox& decimal;
        std::array<Part, 3> parts;  // degrees, minutes, seconds
        double limit;               // of the degrees, both ways
    };

    double Home(const Axis& axis) const { return settings_.Number(axis.decimal.Name()); }
    void Bind(Axis& axis);
    void ShowParts(Axis& axis);
    void TakeParts(const Axis& axis);

    SettingsBinding& settings_;
    Axis latitude_;
    Axis longitude_;
};

}  // namespace veltrix
