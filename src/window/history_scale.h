#pragma once
// The marks by which the history plot is read: hours below, bearings at the left.

#include <QWidget>

#include "window/surface_view.h"

namespace veltrix {

/// Lies on the view of the history plot and lets the mouse through. What it paints is on the screen alone,
/// never in the plot.
class HistoryScale final : public QWidget {
  public:
    explicit HistoryScale(SurfaceView& view);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    /// A mark and its text at a place on the surface, in its own scale.
    void Mark(QPainter& painter, double hour, double bearing, const QString& text) const;

    SurfaceView& view_;
};

}  // namespace veltrix
