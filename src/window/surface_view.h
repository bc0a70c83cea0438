#pragma once
// A drawing surface on the screen.

#include <QImage>
#include <QWidget>
#include <functional>
#include <utility>
#include <vector>

#include "display/picture_box.h"
#include "window/bindings.h"
#include "window/mouse_relay.h"

namespace veltrix {

/// The pixels as Qt keeps them: red and blue the other way round.
QImage ToImage(const Bitmap& bitmap);

/// Width and height of a surface in its pixels.
QSize SizeOf(const PictureBox& box);

/// Where a surface lies in a widget: the largest centred place of its shape, in whole pixels of the screen.
struct SurfacePlace {
    QSize device;       ///< in pixels of the screen
    QPointF corner;     ///< upper left, in the widget's coordinates
    double factor = 1;  ///< the widget's pixels for one of the surface
};

/// The place of a surface of `pixels` in a widget of size `room`, whose pixel is `ratio` pixels of the
/// screen.
SurfacePlace PlaceOf(QSize pixels, QSize room, double ratio);

/// Shows a drawing surface as large as fits, with black around it: in whole multiples pixel by pixel, else
/// smoothly. What the mouse does on it goes to its control, in the coordinates of the pixel pointed at; the
/// keys Enter and Space are a left click, the menu key is a right one.
class SurfaceView final : public QWidget {
  public:
    SurfaceView(Bindings& bindings, PictureBox& box, QWidget* parent = nullptr);
    ~SurfaceView() override;

    /// Keeps a child widget in a corner, at an edge or in the middle of the surface's place.
    void Pin(QWidget& child, Qt::Alignment where);

    /// Keeps a child widget at the label's Left and Top, which are in pixels of the surface, and whole inside
    /// this widget. Where its text takes more room than there is, it goes to the other side of what it lies
    /// beside, `side` pixels of the surface away. REQUIRES that the label is bound.
    void PinBeside(QWidget& child, Label& label, int side);
    /// Runs `place` whenever the surface's place has changed.
    void WhenPlaced(std::function<void()> place) { placed_.push_back(std::move(place)); }

    /// The present place of the surface.
    SurfacePlace Place() const;
    /// A place on the surface, in its pixels, in the coordinates of this widget.
    QPoint InWidget(double x, double y) const;
    /// The place on the surface, in its own coordinates, of the pixel that a position of this widget lies in.
    QPointF OnSurface(QPointF position) const { return InScale(PixelAt(position)); }
    PictureBox& Box() const { return box_; }

    /// Modest, since it takes what there is.
    QSize sizeHint() const override;
    /// A view that is hidden gives its focus to the next that is shown in its window.
    void setVisible(bool visible) override;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    struct Pinned {
        QWidget* child;
        Qt::Alignment where;
    };

    void PlacePinned();
    void Prepare(const SurfacePlace& place);
    /// The pixel of the surface that a position lies in; it may lie outside.
    QPoint PixelAt(QPointF position) const;
    /// A pixel of the surface in the surface's own coordinates.
    QPointF InScale(QPoint pixel) const;

    Bindings& bindings_;
    PictureBox& box_;
    MouseRelay* mouse_;
    std::vector<Pinned> pinned_;
    std::vector<std::function<void()>> placed_;
    QImage shown_;  // the surface as it is on the screen, in pixels of the screen
    bool stale_ = true;
    bool focusByKey_ = false;  // the focus is shown to those who moved it with the keys
};

}  // namespace veltrix
