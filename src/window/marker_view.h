#pragma once
// The mark of a station on the map.

#include "window/bindings.h"
#include "window/surface_view.h"

namespace veltrix {

/// A small square in its model's colour, with a border where the model has one, at the model's place on a
/// surface and scaled with it. It follows the mouse and can be dragged; positions are in pixels of the
/// surface, from the mark's upper left corner, those of a drop on the surface itself. Child of the view.
class MarkerView final : public QWidget {
  public:
    /// On a view much smaller than its surface a mark can still be hit.
    static constexpr int LeastSide = 7;

    MarkerView(Bindings& bindings, Marker& marker, SurfaceView& view);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void MoveToPlace();
    /// A position on this widget in pixels of the surface.
    QPointF OnMarker(QPointF position) const;

    Marker& marker_;
    SurfaceView& view_;
};

}  // namespace veltrix
