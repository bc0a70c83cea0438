#pragma once
// A station's window on a screen that nobody sees.

#include <gtest/gtest.h>

#include <QApplication>
#include <QPointF>
#include <QTest>
#include <QTimer>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/qt/qt_event_loop.h"
#include "station/form_controls.h"
#include "support/plain_glyphs.h"
#include "support/scratch_folder.h"
#include "window/main_window.h"
#include "window/surface_view.h"

namespace veltrix {

/// The form's controls, no station behind them, and a window made by Show().
struct ShownWindow : ::testing::Test {
    ShownWindow() {
        for (const char* const view : {"Picture4", "Picture5"}) controls.Picture(view).SetVisible(false);
    }

    static bool Offscreen() { return qputenv("QT_QPA_PLATFORM", "offscreen"); }

    /// Made after the handlers are set, as by the program.
    MainWindow& Show(QSize size = {1280, 800}) {
        window =
            std::make_unique<MainWindow>(controls.All(), loop, folder / "window.ini", [this] { ++closed; });
        window->resize(size);
        window->show();
        QTest::qWait(0);
        return *window;
    }

    /// Lets the window take over what the models have changed, and what follows from that. Timers fire in the
    /// order in which they are due, so that the window's has when a longer one has.
    static void NextFrame() {
        for (int frame = 0; frame < 2; ++frame) {
            bool passed = false;
            QTimer::singleShot(20, Qt::PreciseTimer, [&passed] { passed = true; });
            EXPECT_TRUE(QTest::qWaitFor([&passed] { return passed; }, 60000));
        }
    }

    template <class W>
    W& Widget(std::string_view name) const {
        auto* const found =
            dynamic_cast<W*>(window->findChild<QWidget*>(QString::fromUtf8(name.data(), name.size())));
        if (!found) throw std::logic_error("no such widget: " + std::string(name));
        return *found;
    }

    /// Where a pixel of a surface is on its view.
    QPoint At(std::string_view view, double x, double y) const {
        return Widget<SurfaceView>(view).InWidget(x + 0.5, y + 0.5);
    }

    bool offscreen = Offscreen();
    int count = 0;
    QApplication application{count, nullptr};
    ScratchFolder folder;
    PlainGlyphs glyphs;
    FormControls controls{glyphs};
    QtEventLoop loop;
    int closed = 0;
    std::unique_ptr<MainWindow> window;
};

}  // namespace veltrix
