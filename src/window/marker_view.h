#pragma once
// The mark of a station on the map.

#include "window/bindings.h"
#include "window/surface_view.h"

namespace veltrix {

/// A small square in its model's colour, at the model's place on a surface and scaled with it. It follows the
/// mouse; positions are in pixels of the surface, from the mark's upper left corner. Child of the view.
class MarkerView final : public QWidget {
  public:
    MarkerView(Bindings& bindings, Marker& marker, SurfaceView& view);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    void MoveToPlace();
    MouseEvent EventAt(const QMouseEvent& event, MouseAction action, MouseButton button) const;

    Bindings& bindings_;
    Marker& marker_;
    SurfaceView& view_;
};

}  // namespace veltrix
