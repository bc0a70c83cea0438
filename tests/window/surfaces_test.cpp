// Surfaces, marks and the mouse on them.

#include <QPixmap>
#include <vector>

#include "window/enlarge.h"
#include "window/marker_view.h"
#include "window/shown_window.h"

namespace veltrix {
namespace {

using Surfaces = ShownWindow;

TEST_F(Surfaces, TheMouseReachesThePixelItPointsAt) {
    std::vector<MouseEvent> seen;
    controls.Picture("Picture1").OnMouse = [&](const MouseEvent& event) { seen.push_back(event); };
    Show();
    for (const QSize size : {QSize(960, 540), QSize(1024, 600), QSize(1280, 800), QSize(2400, 1700)}) {
        window->resize(size);
        NextFrame();
        // Below one pixel of the screen for one of the surface, a press hits a neighbour at worst.
        const double factor = Widget<SurfaceView>("Picture1").Place().factor;
        const double near = factor < 1 ? 1 : 0;
        for (const auto& [x, y] : {std::pair{2, 2}, {278, 278}, {555, 555}, {10, 500}, {400, 3}}) {
            seen.clear();
            QTest::mouseClick(&Widget<QWidget>("Picture1"), Qt::LeftButton, {}, At("Picture1", x, y));
            ASSERT_GE(seen.size(), 2U) << size.width() << ": " << x << "," << y;
            EXPECT_NEAR(seen.front().x, x, near) << size.width();
            EXPECT_NEAR(seen.front().y, y, near) << size.width();
        }
    }
}

TEST_F(Surfaces, PositionsAreInTheSurfacesOwnScale) {
    MouseEvent last;
    controls.Picture("Picture1").SetVisible(false);
    controls.Picture("Picture5").SetVisible(true);
    for (const char* const name : {"Picture5", "Picture3"})
        controls.Picture(name).OnMouse = [&](const MouseEvent& event) { last = event; };
    Show();
    QTest::mousePress(&Widget<QWidget>("Picture5"), Qt::LeftButton, {}, At("Picture5", 278.0, 139.0));
    EXPECT_NEAR(last.x, 278 * 24.0 / 557, 1e-9);  // 24 hours by 180 degrees, from the top
    EXPECT_NEAR(last.y, 139 * 180.0 / 557, 1e-9);
    QTest::mousePress(&Widget<QWidget>("Picture3"), Qt::LeftButton, {}, At("Picture3", 1, 1));
    EXPECT_NEAR(last.x, -24000 + 48000.0 / 205, 300);
    EXPECT_NEAR(last.y, 24000 - 48000.0 / 205, 300) << "upward";
}

TEST_F(Surfaces, AClickIsAReleaseInsideByEitherButton) {
    int onStrongest = 0;
    controls.Text("Text5").OnMouse = [&](const MouseEvent&) { ++onStrongest; };
    PictureBox& box = controls.Picture("Picture1");
    std::vector<MouseButton> clicks;
    std::vector<MouseAction> actions;
    box.OnClick = [&](MouseButton button) { clicks.push_back(button); };
    box.OnMouse = [&](const MouseEvent& event) { actions.push_back(event.action); };
    Show();
    auto& view = Widget<QWidget>("Picture1");
    const QPoint inside = At("Picture1", 278, 278);
    for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
        QTest::mouseClick(&view, button, {}, inside);
    EXPECT_EQ(clicks, (std::vector{MouseButton::Left, MouseButton::Right}));

    QTest::mousePress(&view, Qt::LeftButton, {}, inside);
    QTest::mouseRelease(&view, Qt::LeftButton, {}, {-20, -20});
    EXPECT_EQ(clicks.size(), 2U) << "released outside";
    EXPECT_EQ(actions.back(), MouseAction::Up);
    QTest::mousePress(&view, Qt::LeftButton, {}, {-20, -20});
    QTest::mouseRelease(&view, Qt::LeftButton, {}, inside);
    EXPECT_EQ(clicks.size(), 2U) << "pressed outside";
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_EQ(clicks.size(), 3U);
    QTest::mouseMove(&Widget<QWidget>("Text5"), QPoint(9, 5));
    QTest::mouseClick(&Widget<QWidget>("Text5"), Qt::LeftButton);
    EXPECT_EQ(onStrongest, 2) << "press and release; the mouse may pass over it";
}

TEST_F(Surfaces, WhatIsPaintedIsShownInItsColours) {
    PictureBox& box = controls.Picture("Picture1");
    Show({1600, 1300});
    for (const QColor& colour : {QColor(255, 0, 0), QColor(10, 20, 250)}) {
        for (int x = 200; x < 204; ++x)
            for (int y = 100; y < 104; ++y)
                box.surface.PSet(x, y, Rgb(colour.red(), colour.green(), colour.blue()));
        NextFrame();
        const QImage image = Widget<QWidget>("Picture1").grab().toImage();
        EXPECT_EQ(image.pixelColor(At("Picture1", 201.5, 101.5)), colour);
    }
}

TEST(Enlarged, KeepsPixelsWholeAndMixesOnlyWhatIsShared) {
    QImage image(3, 2, QImage::Format_RGB32);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x) image.setPixelColor(x, y, QColor(80 * x, 200 * y, 255 - 80 * x));
    EXPECT_EQ(Enlarged(image, image.size()), image);
    const QImage triple = Enlarged(image, {9, 6});
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 9; ++x) EXPECT_EQ(triple.pixel(x, y), image.pixel(x / 3, y / 3)) << x << "," << y;
    // The second column holds a third of the first and two of the next.
    const QImage wider = Enlarged(image, {4, 3});
    EXPECT_EQ(wider.pixelColor(0, 0), image.pixelColor(0, 0));
    EXPECT_NEAR(wider.pixelColor(1, 0).red(), 80 * 2 / 3.0, 1.5);
    EXPECT_NEAR(wider.pixelColor(1, 1).green(), 100, 1.5);
    EXPECT_EQ(wider.pixelColor(3, 2), image.pixelColor(2, 1));
}

TEST(SurfacePlace, IsTheLargestCentredOneOfItsShape) {
    const std::tuple<QSize, QSize, double, QSize, QPointF, double> table[] = {
        {{557, 557}, {557, 557}, 1, {557, 557}, {0, 0}, 1},
        {{557, 557}, {1200, 1114}, 1, {1114, 1114}, {43, 0}, 2},
        {{557, 557}, {600, 557}, 2, {1114, 1114}, {21.5, 0}, 1},  // two pixels of the screen for one
        {{200, 100}, {100, 100}, 1, {100, 50}, {0, 25}, 0.5},
        {{557, 557}, {0, 0}, 1, {1, 1}, {-1, -1}, 1.0 / 557},
    };
    for (const auto& [pixels, room, ratio, device, corner, factor] : table) {
        const SurfacePlace place = PlaceOf(pixels, room, ratio);
        EXPECT_EQ(place.device, device) << room.width();
        EXPECT_LE((place.corner - corner).manhattanLength(), 0.02) << room.width();
        EXPECT_NEAR(place.factor, factor, 1e-9) << room.width();
    }
}

TEST_F(Surfaces, MarksStandAtTheirPlaceAndFollowTheMouse) {
    controls.Picture("Picture1").SetVisible(false);
    controls.Picture("Picture4").SetVisible(true);
    auto& mark = dynamic_cast<Marker&>(*controls.All().Find("Picture7(100)"));
    std::vector<MouseEvent> seen;
    mark.OnMouse = [&](const MouseEvent& event) { seen.push_back(event); };
    Show();
    EXPECT_FALSE(Widget<QWidget>("Picture7(100)").isVisible());
    mark.SetVisible(true);
    mark.SetLeft(300);
    mark.SetTop(120);
    mark.SetBackColor(Yellow);
    NextFrame();
    auto& shown = Widget<MarkerView>("Picture7(100)");
    ASSERT_TRUE(shown.isVisible());
    EXPECT_LE((shown.geometry().center() - At("Picture4", 304, 124)).manhattanLength(), 2);
    EXPECT_EQ(window->grab().toImage().pixelColor(shown.mapTo(window.get(), shown.rect().center())),
              QColor(255, 255, 0));
    QTest::mouseClick(&shown, Qt::RightButton);
    QTest::mouseClick(&shown, Qt::MiddleButton);
    ASSERT_EQ(seen.size(), 4U);
    EXPECT_EQ(std::pair(seen[0].action, seen[1].action), std::pair(MouseAction::Down, MouseAction::Up));
    EXPECT_EQ(seen[1].button, MouseButton::Right);
    EXPECT_NEAR(seen[1].x, 4, 1);
    EXPECT_EQ(seen[3].button, MouseButton::Left) << "on a mark the middle button selects, too";
    window->resize(1900, 1000);
    NextFrame();
    EXPECT_LE((shown.geometry().center() - At("Picture4", 304, 124)).manhattanLength(), 2)
        << "scaled with the map";
}

}  // namespace
}  // namespace veltrix
