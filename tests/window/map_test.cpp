// What lies on the map: the menu of its marks, and the name beside a mark.

#include <QAction>
#include <QMenu>

#include "window/shown_window.h"

namespace veltrix {
namespace {

/// The map, with the mark of row 7 in its middle.
struct MapTest : ShownWindow {
    MapTest() {
        controls.Picture("Picture1").SetVisible(false);
        controls.Picture("Picture4").SetVisible(true);
        PutMark(300);
    }
    void PutMark(double left) {
        mark.SetVisible(true);
        mark.SetLeft(left);
        mark.SetTop(200);
    }
    QWidget& View(const char* name) const { return Widget<QWidget>(name); }
    QRect PlaceOf(const char* name) const {
        const QWidget& shown = View(name);
        return {shown.mapTo(window.get(), QPoint(0, 0)), shown.size()};
    }

    Marker& mark = controls.Mark("Picture7(7)");
};

TEST_F(MapTest, TheMenuOpensAtTheMarkAndItsEntriesPushTheirButtons) {
    mark.OnMouse = [this](const MouseEvent& event) {
        if (event.action == MouseAction::Up) controls.PopUp("mnuPopUp").PopUp(mark.Left(), mark.Top());
    };
    int pushed = 0;
    controls.Push("cmdWhoIs").OnClick = [&](MouseButton) { ++pushed; };
    Show({1024, 600});
    QTest::mouseClick(&View("Picture7(7)"), Qt::RightButton);
    auto& menu = Widget<QMenu>("mnuPopUp");
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
    EXPECT_TRUE(PlaceOf("Picture7(7)").adjusted(-2, -2, 2, 2).contains(window->mapFromGlobal(menu.pos())));
    std::string texts;
    for (const QAction* const entry : menu.actions())
        texts += std::string(entry->isSeparator() ? "-" : "") + entry->text().toStdString() +
                 (entry->isEnabled() ? "*|" : "|");
    EXPECT_EQ(texts,
              "Select|Connect|Disconnect|Who is*|-|Delete|-|Reset Correlation Counter|Reset Strike Count|"
              "Clear Correlation Display|Reset Correlator|");
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(menu.actions()[3]).center());
    EXPECT_EQ(pushed, 1);
    EXPECT_FALSE(menu.isVisible());
}

TEST_F(MapTest, ANameNeverCoversItsMark) {
    Show();
    Label& name = controls.Caption("lblWhoIs");
    name.SetCaption("Some station with a rather long name");
    name.SetVisible(true);
    name.SetTop(200);
    name.SetWidth(100);
    for (const QSize size : {QSize(1024, 600), QSize(960, 540), QSize(2400, 1400)})
        for (const double left : {100.0, 440.0, 500.0, 548.0}) {
            PutMark(left);
            name.SetRightAligned(left > 448);
            name.SetLeft(name.RightAligned() ? left - 100 : left + 9);
            window->resize(size);
            NextFrame();
            EXPECT_FALSE(PlaceOf("lblWhoIs").intersects(PlaceOf("Picture7(7)")))
                << size.width() << " " << left;
            EXPECT_TRUE(PlaceOf("Picture4").contains(PlaceOf("lblWhoIs"))) << size.width() << " " << left;
        }
}

TEST_F(MapTest, AMarkIsDroppedWhereTheMouseLetsGoOfIt) {
    std::string events;
    mark.OnMouse = [&](const MouseEvent& event) {
        constexpr char Names[] = {'d', 'm', 'u', 'D'};
        events += Names[static_cast<int>(event.action)];
        if (event.action == MouseAction::Drop)
            events += " " + std::to_string(std::lround(event.x)) + " " + std::to_string(std::lround(event.y));
    };
    Show();
    QWidget& view = View("Picture7(7)");
    const auto drag = [&](QPoint way) {
        events.clear();
        const QPoint from = view.rect().center();
        QTest::mousePress(&view, Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, from + way, view.mapToGlobal(from + way), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&view, &move);
        QTest::mouseRelease(&view, Qt::LeftButton, {}, from + way);
        return events;
    };
    const QPoint target = At("Picture4", 100, 330) - view.mapTo(&View("Picture4"), view.rect().center());
    EXPECT_EQ(drag(target), "dD 100 330");
    EXPECT_EQ(drag({1, 1}), "dmu") << "a hand that trembles clicks";
}

}  // namespace
}  // namespace veltrix
