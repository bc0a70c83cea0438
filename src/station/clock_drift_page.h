#pragma once
// What is known of the stations' sample clocks.

#include "detection/consumers.h"
#include "station/form_controls.h"
#include "station/station_network.h"
#include "timebase/class_clock_drift.h"

namespace veltrix {

/// Measures the local sample clock and shows it beside that of the selected station. Owned by the form.
class ClockDriftPage final : public DriftRecord {
  public:
    ClockDriftPage(FormControls& controls, Files& files, StationNetwork& network);

    void Update(double d, double c) override { ClockDrift.Update(d, c); }

    /// The measure of the local sample clock, in samples per day; 0 while there is none.
    double GetCoarse() { return ClockDrift.GetCoarse(); }
    /// Shows what the local and the selected station tell of their clocks, and the difference.
    void Show();

    /// Keeps the record for the next run. Raises what Files raises.
    void Save() const { ClockDrift.Save(); }

  private:
    StationNetwork& network_;
    ClassClockDrift ClockDrift;
    TextBox& txtLocalClockDrift;
    TextBox& txtRemoteClockDrift;
    TextBox& txtDiffLocalRemote;
};

}  // namespace veltrix
