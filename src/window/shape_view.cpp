#include "window/shape_view.h"

#include <QPainter>
#include <algorithm>
#include <utility>

#include "window/marker_view.h"
#include "window/palette.h"

namespace veltrix {

namespace {

constexpr int LineWidth = 1;          // pixels of the screen
constexpr int Lines = 2 * LineWidth;  // the figure's own and the black one around it
constexpr int LeastInside = MarkerView::LeastSide + 2;

}  // namespace

OutlineView::OutlineView(Bindings& bindings, Shape& shape, Kind kind, SurfaceView& view)
    : QWidget(&view), shape_(shape), kind_(kind), view_(view) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    view.WhenPlaced([this] { MoveToPlace(); });
    bindings.Bind(shape, *this, [this] {
        MoveToPlace();
        raise();
        update();
    });
}

void OutlineView::MoveToPlace() {
    const QPoint corner = view_.InWidget(shape_.Left(), shape_.Top());
    const QPoint end = view_.InWidget(shape_.Left() + shape_.Width(), shape_.Top() + shape_.Height());
    const QPoint centre = (corner + end) / 2;
    const int width = std::max(end.x() - corner.x(), LeastInside) + 2 * Lines;
    const int height = std::max(end.y() - corner.y(), LeastInside) + 2 * Lines;
    setGeometry(centre.x() - width / 2, centre.y() - height / 2, width, height);
}

void OutlineView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QRect line = rect();
    for (const QColor& color : {QColor(Qt::black), ToColor(shape_.ForeColor())}) {
        line.adjust(0, 0, -LineWidth, -LineWidth);
        painter.setPen(QPen(color, LineWidth));
        if (kind_ == Kind::Circle)
            painter.drawEllipse(line);
        else
            painter.drawRect(line);
        line.adjust(LineWidth, LineWidth, 0, 0);
    }
}

LineView::LineView(Bindings& bindings, LineShape& line, SurfaceView& view)
    : QWidget(&view), line_(line), view_(view) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    view.WhenPlaced([this] { MoveToPlace(); });
    bindings.Bind(line, *this, [this] {
        MoveToPlace();
        raise();
        update();
    });
}

QLine LineView::InView() const {
    const LineShape::Ends& ends = line_.TheEnds();
    return {view_.InWidget(ends.X1, ends.Y1), view_.InWidget(ends.X2, ends.Y2)};
}

void LineView::MoveToPlace() {
    const QLine line = InView();
    setGeometry(QRect(line.p1(), line.p2()).normalized().adjusted(-Lines, -Lines, Lines, Lines));
}

void LineView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QLine line = InView().translated(-pos());
    for (const auto& [color, width] :
         {std::pair{QColor(Qt::black), 3 * LineWidth}, std::pair{ToColor(line_.ForeColor()), LineWidth}}) {
        painter.setPen(QPen(color, width));
        painter.drawLine(line);
    }
}

MapSign::MapSign(Bindings& bindings, Shape& shape, Kind kind) : shape_(shape), kind_(kind) {
    bindings.Bind(shape, *this, [this] { update(); });
}

QSize MapSign::sizeHint() const {
    const int side = fontMetrics().height() + 4;
    return {side, side};
}

void MapSign::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, kind_ == Kind::Sphere);
    painter.setPen(QPen(ToColor(shape_.ForeColor()), LineWidth));
    painter.setBrush(Qt::black);
    const QRect whole = rect().adjusted(1, 1, -2, -2);
    const QPoint centre = whole.center();
    const int third = whole.width() / 3;
    if (kind_ == Kind::Sphere) {
        // A globe with its meridians and its equator.
        painter.drawEllipse(whole);
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(whole.adjusted(third, 0, -third, 0));
        painter.drawLine(whole.left(), centre.y(), whole.right(), centre.y());
    } else {
        // A sheet with its grid.
        painter.drawRect(whole);
        painter.drawLine(centre.x(), whole.top(), centre.x(), whole.bottom());
        painter.drawLine(whole.left(), centre.y(), whole.right(), centre.y());
    }
}

}  // namespace veltrix
