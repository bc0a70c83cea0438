#include "station/clock_drift_page.h"

#include "common/arithmetic.h"
#include "common/neutral_text.h"

namespace veltrix {

namespace {

void ShowWhole(TextBox& box, double value) {
    box.SetText(GeneralNumber(IntegerPart(value) + 0.0));  // no -0
}

}  // namespace

ClockDriftPage::ClockDriftPage(FormControls& controls, Files& files, StationNetwork& network)
    : network_(network),
      ClockDrift(files),
      txtLocalClockDrift(controls.Text("txtLocalClockDrift")),
      txtRemoteClockDrift(controls.Text("txtRemoteClockDrift")),
      txtDiffLocalRemote(controls.Text("txtDiffLocalRemote")) {}

void ClockDriftPage::Show() {
    const double local = network_.mappers.Local().dClock;
    const double remote = network_.Selected().dClock;
    ShowWhole(txtLocalClockDrift, local);
    ShowWhole(txtRemoteClockDrift, remote);
    ShowWhole(txtDiffLocalRemote, local - remote);
}

}  // namespace veltrix
