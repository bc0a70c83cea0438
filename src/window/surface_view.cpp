#include "window/surface_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <cmath>

#include "window/captions.h"
#include "window/enlarge.h"

namespace veltrix {

namespace {

constexpr double FormUnitsPerPixel = 15;

constexpr int PinMargin = 6;
constexpr double Far = 1e6;  // pixels; what lies beyond is shown nowhere

}  // namespace

QImage ToImage(const Bitmap& bitmap) {
    QImage image(bitmap.width, bitmap.height, QImage::Format_RGB32);
    const auto width = static_cast<std::size_t>(bitmap.width);
    for (int y = 0; y < bitmap.height; ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        const ColourValue* const from = &bitmap.pixels[static_cast<std::size_t>(y) * width];
        for (std::size_t x = 0; x < width; ++x) {
            const auto pixel = static_cast<QRgb>(from[x]);
            row[x] = 0xFF000000U | (pixel & 0xFFU) << 16 | (pixel & 0xFF00U) | (pixel >> 16 & 0xFFU);
        }
    }
    return image;
}

QSize SizeOf(const PictureBox& box) {
    return {box.surface.Image().width, box.surface.Image().height};
}

SurfacePlace PlaceOf(QSize pixels, QSize room, double ratio) {
    const QSize screen(static_cast<int>(room.width() * ratio), static_cast<int>(room.height() * ratio));
    SurfacePlace place;
    place.device = pixels.scaled(screen, Qt::KeepAspectRatio).expandedTo({1, 1});
    place.factor = place.device.width() / ratio / pixels.width();
    // Rounded, so that a pixel of the surface begins with a pixel of the screen.
    place.corner = {std::floor((screen.width() - place.device.width()) / 2.0) / ratio,
                    std::floor((screen.height() - place.device.height()) / 2.0) / ratio};
    return place;
}

SurfaceView::SurfaceView(Bindings& bindings, PictureBox& box, QWidget* parent)
    : QWidget(parent),
      bindings_(bindings),
      box_(box),
      mouse_(new MouseRelay(bindings, box, *this, MouseRelay::Widget::LeavesMouse,
                            {.toControl = [this](QPointF position) { return OnSurface(position); },
                             .holds =
                                 [this](QPointF position) {
                                     return QRect({0, 0}, SizeOf(box_)).contains(PixelAt(position));
                                 }})) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(60, 30);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(ToText(box.Name()));
    const std::size_t painted = bindings.Screen().Add([this] {
        box_.surface.Shown();
        stale_ = true;
        update();
    });
    box.surface.OnPainted = [&bindings, painted] { bindings.Screen().Want(painted); };
    bindings.Bind(box, *this, nullptr);
}

SurfaceView::~SurfaceView() {
    box_.surface.OnPainted = nullptr;
}

void SurfaceView::Pin(QWidget& child, Qt::Alignment where) {
    child.setParent(this);
    pinned_.push_back({&child, where});
}

void SurfaceView::PinBeside(QWidget& child, Label& label, int side) {
    child.setParent(this);
    const auto move = [this, &child, &label, side] {
        const double endsAt = label.RightAligned() ? label.Left() + label.Width() : label.Left() - side;
        const QSize size = child.sizeHint();
        QPoint corner = InWidget(label.Left(), label.Top());
        if (label.RightAligned() || corner.x() + size.width() > width())
            corner.setX(InWidget(endsAt, 0).x() - size.width());
        child.setGeometry(QRect{std::max(0, std::min(corner.x(), width() - size.width())),
                                std::max(0, std::min(corner.y(), height() - size.height())), size.width(),
                                size.height()});
        child.raise();
    };
    WhenPlaced(move);
    bindings_.Also(label, move);
}

QPoint SurfaceView::InWidget(double x, double y) const {
    const SurfacePlace place = Place();
    const QPointF at = place.corner + QPointF(x, y) * place.factor;
    return QPointF(std::clamp(at.x(), -Far, Far), std::clamp(at.y(), -Far, Far)).toPoint();
}

SurfacePlace SurfaceView::Place() const {
    SurfacePlace place = PlaceOf(SizeOf(box_), size(), devicePixelRatioF());
    // A surface can be moved under what it is seen through.
    place.corner.rx() += std::round(box_.Left() / FormUnitsPerPixel * place.factor);
    return place;
}

QSize SurfaceView::sizeHint() const {
    return SizeOf(box_) / 2;
}

void SurfaceView::setVisible(bool visible) {
    if (!visible && hasFocus()) clearFocus();
    QWidget::setVisible(visible);
    if (visible && !window()->focusWidget()) setFocus(Qt::OtherFocusReason);
}

bool SurfaceView::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) PlacePinned();
    return QWidget::event(event);
}

void SurfaceView::PlacePinned() {
    const SurfacePlace place = Place();
    const QSizeF size = QSizeF(SizeOf(box_)) * place.factor;
    const QRect area =
        QRectF(place.corner, size).toRect().adjusted(PinMargin, PinMargin, -PinMargin, -PinMargin);
    for (const Pinned& pinned : pinned_) {
        const QSize wanted = pinned.child->sizeHint().boundedTo(area.size());
        pinned.child->setGeometry(QStyle::alignedRect(Qt::LeftToRight, pinned.where, wanted, area));
    }
    for (const auto& move : placed_) move();
}

void SurfaceView::resizeEvent(QResizeEvent* /*event*/) {
    PlacePinned();
}

void SurfaceView::Prepare(const SurfacePlace& place) {
    const QImage image = ToImage(box_.surface.Image());
    const bool larger = place.device.width() >= image.width() && place.device.height() >= image.height();
    shown_ = larger ? Enlarged(image, place.device)
                    : image.scaled(place.device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    shown_.setDevicePixelRatio(devicePixelRatioF());
    stale_ = false;
}

void SurfaceView::paintEvent(QPaintEvent* event) {
    const SurfacePlace place = Place();
    if (stale_ || shown_.size() != place.device) Prepare(place);
    QPainter painter(this);
    painter.fillRect(event->rect(), Qt::black);
    painter.drawImage(place.corner, shown_);
    if (!hasFocus() || !focusByKey_) return;
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

QPoint SurfaceView::PixelAt(QPointF position) const {
    const SurfacePlace place = Place();
    const QPointF at = (position - place.corner) / place.factor;
    return {static_cast<int>(std::floor(at.x())), static_cast<int>(std::floor(at.y()))};
}

QPointF SurfaceView::InScale(QPoint pixel) const {
    const SurfaceScale& scale = box_.surface.Scale();
    const QSize size = SizeOf(box_);
    return {scale.left + pixel.x() * scale.width / size.width(),
            scale.top + pixel.y() * scale.height / size.height()};
}

void SurfaceView::focusInEvent(QFocusEvent* event) {
    const Qt::FocusReason reason = event->reason();
    focusByKey_ = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
    QWidget::focusInEvent(event);
}

void SurfaceView::keyPressEvent(QKeyEvent* event) {
    const QPointF centre = InScale({SizeOf(box_).width() / 2, SizeOf(box_).height() / 2});
    switch (event->key()) {
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return mouse_->Click(MouseButton::Left, centre);
        case Qt::Key_Menu:
            return mouse_->Click(MouseButton::Right, centre);
        default:
            QWidget::keyPressEvent(event);
    }
}

}  // namespace veltrix
