#include "window/display_area.h"

#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

#include "window/captions.h"
#include "window/history_scale.h"
#include "window/marker_view.h"
#include "window/palette.h"
#include "window/pop_up_menu.h"
#include "window/shape_view.h"

namespace veltrix {

namespace {

constexpr int Margin = 8;
constexpr int LeastView = 320;
constexpr double ScopePart = 0.21;  // of the width that views and scopes share
constexpr int RoomAroundText = 12;  // pixels
/// The longest text below a scope: amplitude, direction and time of the strongest detection.
constexpr char WidestText[] = "-32.8 dB   125.5 °   13:26:30";
constexpr int OverlayAlpha = 170;

/// A piece that lies on a view; what shows through it is dimmed.
class Overlay final : public QWidget {
  public:
    explicit Overlay(bool takesMouse) {
        QPalette dimmed;
        QColor under = DisplayPalette().color(QPalette::Window);
        under.setAlpha(OverlayAlpha);
        dimmed.setColor(QPalette::Window, under);
        setPalette(dimmed);
        setAutoFillBackground(true);
        setAttribute(Qt::WA_TransparentForMouseEvents, !takesMouse);
        setLayout(new QGridLayout);
        layout()->setContentsMargins(6, 3, 6, 3);
        layout()->setSpacing(4);
    }
    QGridLayout& Grid() { return static_cast<QGridLayout&>(*layout()); }
};

}  // namespace

DisplayArea::DisplayArea(Bindings& bindings, PageBuilder& builder, QWidget* parent)
    : QWidget(parent), bindings_(bindings), builder_(builder) {
    setPalette(DisplayPalette());
    setAutoFillBackground(true);
    DressPolarDisplay(MakeView("Picture1", "Polar display"));
    DressMap(MakeView("Picture4", "Map"));
    new HistoryScale(MakeView("Picture5", "History of the day"));
    amplitude_ = MakeScope("Picture2", "Label4", {"Text4", "Text5"});
    direction_ = MakeScope("Picture3", "Label3", {"Text3", "txtLocal", "txtRemote"});
    mapDialog_ = MakeDialog("Frame2", "cmdCancel", *this);
}

SurfaceView& DisplayArea::MakeView(const char* name, const char* title) {
    auto* const view = static_cast<SurfaceView*>(builder_.Make(name));
    view->setParent(this);
    view->setAccessibleName(QString::fromLatin1(title));
    views_.push_back(view);
    return *view;
}

DisplayArea::Scope DisplayArea::MakeScope(const char* view, const char* label,
                                          const std::vector<std::string_view>& below) {
    auto* const scope = new QWidget(this);
    auto* const rows = new QVBoxLayout(scope);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(2);
    rows->addWidget(builder_.Make(label));
    auto* const surface = static_cast<SurfaceView*>(builder_.Make(view));
    const QString name = ReadableCaption(bindings_.Find(label).Caption());
    surface->setAccessibleName(name);
    rows->addWidget(surface, 1);
    for (const std::string_view box : below) {
        QWidget* const made = builder_.Make(box);
        made->setAccessibleName(name);
        rows->addWidget(made);
    }
    return {scope, surface};
}

QWidget* DisplayArea::MakeDialog(const char* frame, const char* cancel, QWidget& parent) {
    auto* const dialog = new QFrame(&parent);
    dialog->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    dialog->setAutoFillBackground(true);
    QPalette raised;
    raised.setColor(QPalette::Window, DisplayPalette().color(QPalette::Button));
    dialog->setPalette(raised);
    auto* const rows = new QVBoxLayout(dialog);
    rows->setContentsMargins(Margin, Margin, Margin, Margin);
    auto* const title = new QLabel;
    title->setTextFormat(Qt::PlainText);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    title->setAlignment(Qt::AlignCenter);
    rows->addWidget(title);
    rows->addWidget(builder_.Page(frame));
    Control& model = bindings_.Find(frame);
    bindings_.Bind(model, *dialog, [dialog, title, &model] {
        title->setText(ReadableCaption(model.Caption()));
        if (model.Visible()) dialog->raise();
    });
    Control& button = bindings_.Find(cancel);
    // Wherever the focus is, as long as the dialog is seen; of two that are, each in its turn.
    auto* const escape = new QShortcut(Qt::Key_Escape, dialog);
    for (const auto pressed : {&QShortcut::activated, &QShortcut::activatedAmbiguously})
        connect(escape, pressed, &bindings_,
                [this, &button] { bindings_.Act(button, [&button] { button.ClickBy(MouseButton::Left); }); });
    return dialog;
}

QWidget& DisplayArea::Labels(Qt::Orientation along, std::initializer_list<const char*> names, bool wraps) {
    auto* const overlay = new Overlay(false);
    int place = 0;
    for (const char* const name : names) {
        QWidget* const label = builder_.Make(name, wraps);
        if (along == Qt::Horizontal)
            overlay->Grid().addWidget(label, 0, place++);
        else
            overlay->Grid().addWidget(label, place++, 0);
    }
    return *overlay;
}

void DisplayArea::Cover(QWidget& overlay, const char* seenWith) {
    Control& control = bindings_.Find(seenWith);
    bindings_.Also(control, [&overlay, &control] { overlay.setVisible(control.Visible()); });
}

void DisplayArea::DressPolarDisplay(SurfaceView& view) {
    // The upper left corner of the surface itself is taken by its caption.
    view.Pin(Labels(Qt::Horizontal, {"Label2", "Text2"}), Qt::AlignTop | Qt::AlignRight);

    auto* const limits = new Overlay(true);
    int row = 0;
    for (const auto& [text, box] : {std::pair{"Centre", "txtMaxdB"}, std::pair{"Rim", "txtMindB"}}) {
        QWidget* const edit = builder_.Make(box);
        edit->setAccessibleName(QString::fromLatin1(text));
        limits->Grid().addWidget(new QLabel(QString::fromLatin1(text)), row, 0);
        limits->Grid().addWidget(edit, row++, 1);
    }
    view.Pin(*limits, Qt::AlignBottom | Qt::AlignLeft);
    view.Pin(*MakeDialog("Frame3", "cmdCancel2", view), Qt::AlignCenter);
}

void DisplayArea::DressMap(SurfaceView& view) {
    new MarkerView(bindings_, dynamic_cast<Marker&>(bindings_.Find("Picture6")), view);
    for (int i = 1; Control* const marker = bindings_.FindIf(ElementName("Picture7", i)); ++i)
        new MarkerView(bindings_, dynamic_cast<Marker&>(*marker), view);
    new OutlineView(bindings_, dynamic_cast<Shape&>(bindings_.Find("ShapeMapperIndex")),
                    OutlineView::Kind::Rectangle, view);
    new OutlineView(bindings_, dynamic_cast<Shape&>(bindings_.Find("ShapeCircle")), OutlineView::Kind::Circle,
                    view);
    for (const char* const bound : {"LineLBound", "LineUbound"})
        new LineView(bindings_, dynamic_cast<LineShape&>(bindings_.Find(bound)), view);
    new PopUpMenu(bindings_, dynamic_cast<Menu&>(bindings_.Find("mnuPopUp")), view);
    for (const auto& [name, kind] :
         {std::pair{"shpSphere", MapSign::Kind::Sphere}, std::pair{"shp2D", MapSign::Kind::Flat}})
        view.Pin(*new MapSign(bindings_, dynamic_cast<Shape&>(bindings_.Find(name)), kind),
                 Qt::AlignTop | Qt::AlignRight);

    view.Pin(Labels(Qt::Horizontal, {"lblTextStrikeCount", "lblStrikeCount4"}),
             Qt::AlignBottom | Qt::AlignRight);

    QWidget& station = Labels(Qt::Vertical, {"LblStationName", "lblStationIp", "lblStationHostName",
                                             "LblStationLastHeared", "LblStationClock"});
    Cover(station, "LblStationName");
    view.Pin(station, Qt::AlignBottom | Qt::AlignLeft);

    QWidget& hint = Labels(Qt::Vertical, {"lblCalibrationMode"}, true);
    Cover(hint, "lblCalibrationMode");
    view.Pin(hint, Qt::AlignBottom | Qt::AlignHCenter);

    QWidget& whoIs = Labels(Qt::Horizontal, {"lblWhoIs"});
    Cover(whoIs, "lblWhoIs");
    view.PinBeside(whoIs, dynamic_cast<Label&>(bindings_.Find("lblWhoIs")), Marker::Side);
}

int DisplayArea::LeastScope() const {
    return fontMetrics().horizontalAdvance(QString::fromUtf8(WidestText)) + RoomAroundText;
}

QSize DisplayArea::minimumSizeHint() const {
    return {LeastView + LeastScope() + 3 * Margin, LeastView + 2 * Margin};
}

bool DisplayArea::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) Arrange();
    return QWidget::event(event);
}

void DisplayArea::resizeEvent(QResizeEvent* /*event*/) {
    Arrange();
}

void DisplayArea::Arrange() {
    const QRect room = rect().adjusted(Margin, Margin, -Margin, -Margin);
    // A scope is as wide as it is high without its texts, if the square view leaves that much.
    // The direction has the more texts; both are made alike.
    const int texts = direction_.whole->sizeHint().height() - direction_.view->sizeHint().height();
    const int scopeHeight = (room.height() - Margin) / 2;
    const int least = std::max(LeastScope(), static_cast<int>(room.width() * ScopePart));
    const int highest = std::max(least, scopeHeight - texts);
    const int scopeWidth = std::clamp(room.width() - room.height() - Margin, least, highest);
    const int side = std::min(room.height(), room.width() - scopeWidth - Margin);
    // Both stand together in the middle.
    const int left = room.left() + (room.width() - side - Margin - scopeWidth) / 2;
    const int top = room.top() + (room.height() - side) / 2;
    for (SurfaceView* const view : views_) view->setGeometry(left, top, side, side);
    const int scopeLeft = left + side + Margin;
    const int used = std::min(scopeHeight, scopeWidth + texts);
    // The scopes begin level with the view, where their height allows.
    const int scopeTop = std::min(top, room.bottom() - 2 * used - Margin);
    amplitude_.whole->setGeometry(scopeLeft, scopeTop, scopeWidth, used);
    direction_.whole->setGeometry(scopeLeft, scopeTop + used + Margin, scopeWidth, used);
    const QSize wanted = mapDialog_->sizeHint().boundedTo({side, side});
    mapDialog_->setGeometry(QRect{left + (side - wanted.width()) / 2, top + (side - wanted.height()) / 2,
                                  wanted.width(), wanted.height()});
}

}  // namespace veltrix
