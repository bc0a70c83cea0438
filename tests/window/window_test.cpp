// The window as a whole: that nothing is missing, its dialogs, its end, its place; the message box and the
// splash.

#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <functional>
#include <memory>

#include "common/failure.h"
#include "health/status_texts.h"
#include "window/palette.h"
#include "window/shown_window.h"
#include "window/window_message_box.h"

namespace veltrix {
namespace {

using Window = ShownWindow;

TEST_F(Window, ShowsEveryControlButTheHiddenSurfacesAndCutsNothingOffOnASmallScreen) {
    EXPECT_EQ(Show({1024, 600}).Unbound(), (std::vector<std::string>{"Picture9", "Picture8"}));
    EXPECT_EQ(window->size(), QSize(1024, 600)) << "it would not fit";
    for (const char* const name : {"SSTab1", "SSTab2", "SSTab3", "SSTab4", "SSTab5", "SSTab6"}) {
        const auto& tabs = Widget<QTabWidget>(name);
        for (int tab = 0; tab < tabs.count(); ++tab) {
            controls.Tabs(name).SetTab(tab);
            NextFrame();
            const QWidget& page = *tabs.widget(tab);
            EXPECT_EQ(page.size().expandedTo(page.minimumSizeHint()), page.size()) << name << tab;
        }
    }
    EXPECT_GE(Widget<QWidget>("Picture1").width(), 400);
}

TEST_F(Window, TheStatusBarTakesOneLineAndGivesWayToTheDisplays) {
    Show({960, 540});
    const int view = Widget<QWidget>("Picture1").width();
    for (const std::string_view name : StatusLabels) {
        Label& label = controls.Caption(name);
        label.SetCaption("! Everything is wrong that can be <b>wrong</b> with a station");
        label.SetToolTipText("All of it");
        label.SetForeColor(VerdictColour(Verdict::Watch));
    }
    NextFrame();
    EXPECT_EQ(window->size(), QSize(960, 540));
    EXPECT_EQ(Widget<QWidget>("Picture1").width(), view);
    int right = 0;
    for (const std::string_view name : StatusLabels) {
        const auto& cell = Widget<QWidget>(name);
        EXPECT_GE(cell.x(), right) << name;
        EXPECT_GE(cell.width(), 100) << name;
        EXPECT_LE(cell.height(), cell.fontMetrics().height() + 2) << name;
        EXPECT_FALSE(cell.toolTip().isEmpty()) << name;
        const QPalette colours = cell.palette();
        EXPECT_GE(Contrast(colours.color(QPalette::Window), colours.color(QPalette::WindowText)), 4.5);
        right = cell.x() + cell.width();
    }
    EXPECT_LE(right, 960);
}

TEST_F(Window, OneViewIsSeenAtATime) {
    Show();
    controls.Picture("Picture1").SetVisible(false);
    controls.Picture("Picture4").SetVisible(true);
    NextFrame();
    EXPECT_FALSE(Widget<QWidget>("Picture1").isVisible());
    EXPECT_EQ(Widget<QWidget>("Picture4").geometry(), Widget<QWidget>("Picture1").geometry());
}

TEST_F(Window, EscapeCancelsADialog) {
    controls.Push("cmdCancel").OnClick = [&](MouseButton) { controls.Group("Frame2").SetVisible(false); };
    controls.Push("cmdCancel2").OnClick = [&](MouseButton) { controls.Group("Frame3").SetVisible(false); };
    Show({960, 540});
    const auto& dialog = Widget<QWidget>("Frame2");
    EXPECT_FALSE(dialog.isVisible());
    for (const char* const focused : {"File3", "Picture1"}) {
        controls.Group("Frame2").SetVisible(true);
        controls.Group("Frame3").SetVisible(focused == std::string_view("Picture1"));
        NextFrame();
        ASSERT_TRUE(dialog.isVisible());
        EXPECT_TRUE(dialog.parentWidget()->rect().contains(dialog.geometry()));
        for (int key = 0; key < 2; ++key) QTest::keyClick(&Widget<QWidget>(focused), Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible()) << focused;
        EXPECT_FALSE(Widget<QWidget>("Frame3").isVisible());
    }
}

TEST_F(Window, ClosesOnceAndComesBackWhereItStood) {
    Show({1100, 700});
    window->move(30, 20);
    QTest::keyClick(window.get(), Qt::Key_Q, Qt::ControlModifier);
    window->close();
    EXPECT_EQ(closed, 1);
    window.reset();
    controls.Text("txtAge").SetText("31");
    controls.Picture("Picture1").surface.PSet(1, 1, White);
    controls.Tabs("SSTab1").SetTab(2);
    NextFrame();  // the models work when the window is gone
    window = std::make_unique<MainWindow>(controls.All(), loop, folder / "window.ini", [] {});
    EXPECT_EQ(window->geometry(), QRect(30, 20, 1100, 700));
    window.reset();
    folder.Put("window.ini", "[Window]\nLeft=90000\nTop=20\nWidth=1100\nHeight=700\n");
    window = std::make_unique<MainWindow>(controls.All(), loop, folder / "window.ini", [] {});
    EXPECT_LT(window->x(), 5000) << "a place that is on no screen any more";
}

TEST_F(Window, ShowsTheSplashUntilItIsClicked) {
    controls.Splash().OnClick = [&](MouseButton) {
        controls.Splash().SetVisible(false);
        throw Failure(53, "gone", "test");
    };
    Show();
    auto& splash = Widget<QWidget>("FrmSplash");
    EXPECT_FALSE(splash.isVisible());
    controls.Splash().SetVisible(true);
    NextFrame();
    ASSERT_TRUE(splash.isVisible());
    QTest::mouseClick(&splash, Qt::LeftButton);
    EXPECT_FALSE(splash.isVisible());
    EXPECT_TRUE(window->isVisible()) << "a failing handler leaves the window standing";
}

struct Asked : ShownWindow {
    /// Asks, acts on the box after the time of some timer events, and returns the reply.
    int Ask(int buttons, const std::function<void(QMessageBox&)>& act) {
        ticks = 0;
        QTimer::singleShot(100, [this, act] {
            auto& box = dynamic_cast<QMessageBox&>(*QApplication::activeModalWidget());
            fired += ticks;
            text = box.text().toStdString();
            act(box);
        });
        return messageBox.Ask({6, "<b>Overflow</b>", buttons, "GyrelUpdate:12 Runtime Error"});
    }

    WindowMessageBox messageBox{loop};
    int ticks = 0;
    int fired = 0;
    std::string text;
};

TEST_F(Asked, EachButtonHasItsReplyAndTimersWait) {
    const auto timer = loop.MakeTimer([this] { ++ticks; });
    timer->SetInterval(5);
    timer->SetEnabled(true);
    const auto type = [](Qt::Key key) { return [key](QMessageBox& box) { QTest::keyClick(&box, key); }; };
    for (const auto& [button, number] : {std::pair{QMessageBox::Abort, reply::Abort},
                                         {QMessageBox::Retry, reply::Retry},
                                         {QMessageBox::Ignore, reply::Ignore}})
        EXPECT_EQ(Ask(2, [&, pressed = button](QMessageBox& box) { box.button(pressed)->click(); }), number);
    EXPECT_EQ(Ask(2, type(Qt::Key_Escape)), reply::Ignore) << "never an end by mistake";
    EXPECT_EQ(Ask(2, type(Qt::Key_Return)), reply::Ignore);
    EXPECT_EQ(Ask(2, [](QMessageBox&) { QCoreApplication::exit(0); }), reply::Ignore) << "the program ends";
    EXPECT_EQ(Ask(64, type(Qt::Key_Return)), reply::Ok);
    EXPECT_EQ(fired, 0) << "no timer fires while a box stands";
    EXPECT_EQ(text, "<b>Overflow</b>");
    ticks = 0;
    EXPECT_TRUE(QTest::qWaitFor([this] { return ticks > 0; }, 60000)) << "afterwards they fire again";
}

}  // namespace
}  // namespace veltrix
