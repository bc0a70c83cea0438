#include "window/main_window.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>
#include <utility>

#include "window/captions.h"
#include "window/display_area.h"
#include "window/page_builder.h"
#include "window/side_panel.h"
#include "window/splash_window.h"
#include "window/status_row.h"

namespace veltrix {

namespace {

constexpr QSize Usual(1280, 800);
constexpr QSize Least(960, 540);

}  // namespace

MainWindow::MainWindow(ControlSet& controls, QtEventLoop& loop, const std::string& placeFile,
                       std::function<void()> closed)
    : bindings_(controls, [&loop](const std::function<void()>& handler) { loop.RunHandler(handler); }),
      place_(ToText(placeFile)),
      closed_(std::move(closed)) {
    PageBuilder builder(bindings_);
    auto* const whole = new QWidget;
    auto* const rows = new QVBoxLayout(whole);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    auto* const columns = new QHBoxLayout;
    rows->addLayout(columns, 1);
    rows->addWidget(new StatusRow(bindings_));
    columns->addWidget(new DisplayArea(bindings_, builder), 1);
    columns->addWidget(new SidePanel(bindings_, builder));
    setCentralWidget(whole);
    setMinimumSize(Least);

    Control& form = bindings_.Find("FrmVeltrix");
    bindings_.Watch(form, [this, &form] { setWindowTitle(ToText(form.Caption())); });
    const auto& picture = dynamic_cast<const PictureBox&>(bindings_.Find("Picture10"));
    new SplashWindow(bindings_, bindings_.Find("FrmSplash"), picture, *this);
    AddKeys();
    place_.Restore(*this, Usual);
    bindings_.Screen().Flush();
}

MainWindow::~MainWindow() {
    if (closed_) place_.Keep(*this);
}

void MainWindow::AddKeys() {
    connect(new QShortcut(Qt::CTRL | Qt::Key_Q, this), &QShortcut::activated, &bindings_,
            [this] { close(); });
    connect(new QShortcut(Qt::Key_F11, this), &QShortcut::activated, &bindings_,
            [this] { setWindowState(windowState() ^ Qt::WindowFullScreen); });
}

void MainWindow::closeEvent(QCloseEvent* event) {
    place_.Keep(*this);
    event->accept();
    if (closed_) std::exchange(closed_, nullptr)();
}

void MainWindow::changeEvent(QEvent* event) {
    // Colours of models are fitted to the palette anew.
    if (event->type() == QEvent::PaletteChange) bindings_.Screen().WantAll();
    QMainWindow::changeEvent(event);
}

}  // namespace veltrix
