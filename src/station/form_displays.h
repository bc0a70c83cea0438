#pragma once
// The displays of the form: polar display, history plot and scopes on the surfaces they belong to.

#include <span>

#include "detection/consumers.h"
#include "display/history_plot.h"
#include "display/polar_display.h"
#include "display/scopes.h"
#include "station/form_controls.h"

namespace veltrix {

/// Takes detections and frames to the surfaces. Owned by the form.
class FormDisplays final : public StrikeDisplays, public ScopeFeed {
  public:
    FormDisplays(FormControls& controls, ErrorReporter& errors);

    /// The polar display, for who lays its background and stores its trail.
    PolarDisplay& Polar() { return polar_; }

    void GyrelUpdate(double dDir, double dAmp, const AmplitudeLimits& limits, ColourValue color) override;
    void UpdateDisplay(DateTime date, double dDir, double dAmp, const AmplitudeLimits& limits) override;

    void Arm() override;
    void ScopeTrigger(double dValue) override;
    void ScopeTriggerXY(double dNS, double dEW) override;
    bool Drawing() const override { return amplitudeScope_.Drawing() || xyScope_.Drawing(); }
    void QuietFrames(std::size_t count, std::span<const double> lastNS,
                     std::span<const double> lastEW) override;
    void MarkFit(double dAngle, double dRadius) override { xyScope_.MarkFit(dAngle, dRadius); }

  private:
    ErrorReporter& errors_;
    Surface& Picture5_;
    PolarDisplay polar_;
    HistoryPlot history_;
    AmplitudeScope amplitudeScope_;
    XYScope xyScope_;
};

}  // namespace veltrix
