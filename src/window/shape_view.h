#pragma once
// The figures that lie on the map.

#include "window/bindings.h"
#include "window/surface_view.h"

namespace veltrix {

/// The outline of a rectangle or circle at its model's place on a surface, scaled with it but never smaller
/// than around a mark, in its model's fore colour with black around it. The mouse goes through. Child of the
/// view.
class OutlineView final : public QWidget {
  public:
    /// What the figure looks like.
    enum class Kind { Rectangle, Circle };

    OutlineView(Bindings& bindings, Shape& shape, Kind kind, SurfaceView& view);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void MoveToPlace();

    Shape& shape_;
    Kind kind_;
    SurfaceView& view_;
};

/// A straight line at its model's place on a surface, in its model's fore colour with black around it. The
/// mouse goes through. Child of the view.
class LineView final : public QWidget {
  public:
    LineView(Bindings& bindings, LineShape& line, SurfaceView& view);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void MoveToPlace();
    QLine InView() const;

    LineShape& line_;
    SurfaceView& view_;
};

/// A small sign that says what kind of map is shown, in its model's fore colour on black.
class MapSign final : public QWidget {
  public:
    /// What the sign stands for.
    enum class Kind { Sphere, Flat };

    MapSign(Bindings& bindings, Shape& shape, Kind kind);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Shape& shape_;
    Kind kind_;
};

}  // namespace veltrix
