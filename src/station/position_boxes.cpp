#include "station/position_boxes.h"

#include <cmath>
#include <utility>

#include "common/arithmetic.h"
#include "common/neutral_text.h"

namespace veltrix {

PositionBoxes::PositionBoxes(FormControls& controls, SettingsBinding& settings)
    : settings_(settings),
      latitude_{controls.Text("txtLatitude"),
                {{{controls.Text("txtLatDeg")}, {controls.Text("txtLatMin")}, {controls.Text("txtLatSec")}}},
                90},
      longitude_{
          controls.Text("txtLongitude"),
          {{{controls.Text("txtLongDeg")}, {controls.Text("txtLongMin")}, {controls.Text("txtLongSec")}}},
          180} {
    Bind(latitude_);
    Bind(longitude_);
}

void PositionBoxes::Bind(Axis& axis) {
    settings_.WhenTaken(axis.decimal.Name(), [this, &axis] {
        ShowParts(axis);
        if (OnMoved) OnMoved(true);
    });
    const std::array<std::pair<double, double>, 3> ranges = {{{-axis.limit, axis.limit}, {0, 59}, {0, 59}}};
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        Part& part = axis.parts[i];
        part.box.OnEntry = [this, &axis, &part, range = ranges[i]] {
            if (!ValidateRange(part.box, range.first, range.second)) return;
            part.value = ValNeutral(part.box.Text());
            TakeParts(axis);
        };
    }
}

void PositionBoxes::ShowParts(Axis& axis) {
    const auto show = [](Part& part, double value, std::string_view mask) {
        part.value = value;
        part.box.SetText(FormatNeutral(value, mask));
        part.box.SetForeColor(White);
    };
    // The modulo keeps the sign of the value, so minutes and seconds of a southern latitude are negative.
    const double home = Home(axis);
    show(axis.parts[0], IntegerPart(home), "000");
    show(axis.parts[1], std::fmod(IntegerPart(home * 60), 60), "00");
    show(axis.parts[2], std::fmod(IntegerPart(home * 3600), 60), "00");
}

void PositionBoxes::TakeParts(const Axis& axis) {
    // Minutes and seconds count upward behind a negative degree, too; a value south or west does not survive
    // the trip through these boxes.
    const double home = axis.parts[0].value + axis.parts[1].value / 60 + axis.parts[2].value / 3600;
    const std::string text = FormatNeutral(home, "0.00000");
    axis.decimal.SetText(text);
    ValidateRange(axis.decimal, -axis.limit, axis.limit);
    settings_.SetNumber(axis.decimal.Name(), home, text);
    if (OnMoved) OnMoved(false);
}

}  // namespace veltrix
