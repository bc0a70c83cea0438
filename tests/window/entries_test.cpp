// What the user types, ticks and chooses, and how the window shows what became of it.

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <vector>

#include "common/neutral_text.h"
#include "window/palette.h"
#include "window/shown_window.h"
#include "window/text_edit.h"

namespace veltrix {
namespace {

using Entries = ShownWindow;

/// A numeric box as the form binds it: a good number is written back by its mask, anything else stays in red.
void BindNumber(TextBox& box, double& stored) {
    box.OnEntry = [&box, &stored] {
        const double value = ValNeutral(box.Text());
        const bool good = !box.Text().empty() && box.Text() != "-" && value >= -90 && value <= 90;
        box.SetForeColor(good ? White : Red);
        if (!good) return;
        stored = value;
        box.SetText(FormatNeutral(value, "0.00000"));
    };
}

TEST_F(Entries, TypingIsNotFought) {
    struct Case {
        const char* before;
        const char* keys;
        const char* shown;
        double stored;
        bool refused;
    };
    constexpr Case Cases[] = {
        {"", "5", "5.00000", 5, false},
        {"", "52.1", "52.10000", 52.1, false},
        {"", "-", "-", 0, true},
        {"", "-7.25", "-7.25000", -7.25, false},
        {"1.00000", "91", "911.00000", 0, true},  // typed before what stands there
    };
    TextBox& box = controls.Text("txtLatitude");
    double stored = 0;
    BindNumber(box, stored);
    Show();
    controls.Tabs("SSTab1").SetTab(4);
    NextFrame();
    auto& edit = Widget<QLineEdit>("txtLatitude");
    for (const Case& c : Cases) {
        SCOPED_TRACE(c.keys);
        stored = 0;
        box.SetText(c.before);
        box.SetForeColor(White);
        NextFrame();
        edit.setFocus();
        edit.setCursorPosition(0);
        QTest::keyClicks(&edit, QString::fromLatin1(c.keys));
        EXPECT_EQ(edit.text().toStdString(), c.shown);
        EXPECT_EQ(box.Text(), c.shown);
        EXPECT_EQ(stored, c.stored);
        EXPECT_EQ(box.ForeColor(), c.refused ? Red : White);
        EXPECT_EQ(edit.cursorPosition(), static_cast<int>(std::string_view(c.keys).size()));
    }
    box.SetText("");
    QTest::keyClicks(&edit, QStringLiteral("1"));
    edit.selectAll();
    QTest::keyClick(&edit, Qt::Key_Delete);
    EXPECT_EQ(edit.text(), QString()) << "an emptied box stays empty";
    EXPECT_EQ(box.ForeColor(), Red);
}

TEST(CursorAfterRewrite, StaysWhereTheUserTypes) {
    struct Case {
        const char* before;
        int cursor;
        const char* after;
        int expected;
    };
    constexpr Case Cases[] = {
        {"5", 1, "5.00000", 1},          // zeros came behind
        {"012", 3, "12", 2},             // a zero went before
        {"1.2345678", 9, "1.23457", 7},  // rounded at the end
        {"a,b|c", 3, "a b|c", 3},        // a sign replaced before the cursor
        {"abc", 3, "", 0},
    };
    for (const Case& c : Cases)
        EXPECT_EQ(CursorAfterRewrite(QString::fromLatin1(c.before), c.cursor, QString::fromLatin1(c.after)),
                  c.expected)
            << c.before;
}

TEST_F(Entries, ARefusedTextIsRedAndReadableOnEveryPalette) {
    TextBox& box = controls.Text("txtAge");
    box.OnEntry = [] {};
    controls.Text("txtMindB").OnEntry = [] {};
    Show();
    const QPalette dark(QColor(53, 53, 53), QColor(30, 30, 30));
    const QPalette light(QColor(239, 239, 239), QColor(239, 239, 239));
    for (const QPalette& palette : {light, dark}) {
        QApplication::setPalette(palette);
        NextFrame();
        for (const char* const name : {"txtAge", "txtMindB"}) {
            SCOPED_TRACE(name);
            const QWidget& edit = Widget<QWidget>(name);
            const QColor own = edit.palette().color(QPalette::Text);
            controls.Text(name).SetForeColor(Red);
            NextFrame();
            const QColor red = edit.palette().color(QPalette::Text);
            EXPECT_GE(Contrast(red, edit.palette().color(QPalette::Base)), 4.5);
            EXPECT_GT(red.red(), red.green() + 60);
            EXPECT_GT(red.red(), red.blue() + 60);
            controls.Text(name).SetForeColor(White);
            NextFrame();
            EXPECT_EQ(edit.palette().color(QPalette::Text), own) << "the palette's own text again";
        }
    }
}

TEST_F(Entries, TextOnABackgroundOfItsOwnIsReadable) {
    Show();
    for (const ColourValue background :
         {White, Yellow, Rgb(0, 0, 255), Red, Rgb(0, 128, 0), Rgb(128, 128, 128)}) {
        for (const ColourValue text : {White, Red, Black}) {
            controls.Text("txtStateClient").SetBackColor(background);
            controls.Text("txtStateClient").SetForeColor(text);
            NextFrame();
            const QPalette shown = Widget<QWidget>("txtStateClient").palette();
            EXPECT_EQ(shown.color(QPalette::Base), ToColor(background));
            EXPECT_GE(Contrast(shown.color(QPalette::Base), shown.color(QPalette::Text)), 4.5);
        }
    }
}

TEST_F(Entries, WhatHasNoHandlerTakesNoEntry) {
    Show();
    auto& edit = Widget<QLineEdit>("txtAge");
    auto& button = Widget<QPushButton>("cmdHomePage");
    EXPECT_TRUE(edit.isReadOnly());
    EXPECT_FALSE(button.isEnabled());
    EXPECT_FALSE(Widget<QComboBox>("cmbRemoteHost").isEnabled());

    controls.Text("txtAge").OnEntry = [] {};
    controls.Text("txtAge").SetText("30");
    int clicks = 0;
    controls.Push("cmdHomePage").OnClick = [&](MouseButton) { ++clicks; };
    controls.Push("cmdHomePage").SetCaption("Go && see & look");
    NextFrame();
    EXPECT_FALSE(edit.isReadOnly());
    EXPECT_EQ(button.text(), QStringLiteral("Go && see && look")) << "read as: Go & see & look";
    button.click();
    EXPECT_EQ(clicks, 1);
}

TEST_F(Entries, ATickRunsTheHandlerWhichHasTheLastWord) {
    CheckBox& box = controls.Check("Check1");
    box.OnClick = [&](MouseButton) { box.SetValue(0); };
    Show();
    auto& check = Widget<QCheckBox>("Check1");
    check.click();
    EXPECT_FALSE(check.isChecked());
    box.OnClick = nullptr;
    check.click();
    EXPECT_TRUE(box.Checked());
    EXPECT_TRUE(check.isChecked());
}

TEST_F(Entries, TabsFollowUserAndModel) {
    TabStrip& strip = controls.Tabs("SSTab1");
    int clicks = 0;
    strip.OnClick = [&](MouseButton) { ++clicks; };
    Show();
    auto& tabs = Widget<QTabWidget>("SSTab1");
    const auto click = [&](int tab) {
        QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, tabs.tabBar()->tabRect(tab).center());
    };
    click(3);
    EXPECT_EQ(strip.Tab(), 3);
    EXPECT_EQ(clicks, 1);
    click(3);
    EXPECT_EQ(clicks, 2) << "a click on the open tab is one, too";
    strip.SetTab(1);
    NextFrame();
    EXPECT_EQ(tabs.currentIndex(), 1);
    EXPECT_EQ(clicks, 2) << "the model's own change is no click";
    QTest::keyClick(window.get(), Qt::Key_5, Qt::ControlModifier);
    EXPECT_EQ(strip.Tab(), 4);
    EXPECT_EQ(Widget<QTabWidget>("SSTab4").tabText(2), QStringLiteral("Drag && Drop"))
        << "read as: Drag & Drop";
}

TEST_F(Entries, EqualEntriesAreChosenByTheirPlace) {
    ListBox& list = controls.List("File2");
    std::vector<int> chosen;
    list.OnClick = [&](MouseButton) { chosen.push_back(list.ListIndex()); };
    list.SetEntries({"a", "b", "a"});
    controls.Group("Frame3").SetVisible(true);
    Show();
    auto& shown = Widget<QListWidget>("File2");
    QTest::mouseClick(shown.viewport(), Qt::LeftButton, {}, shown.visualItemRect(shown.item(2)).center());
    QTest::keyClick(&shown, Qt::Key_Up);
    QTest::keyClick(&shown, Qt::Key_Return);
    EXPECT_EQ(chosen, (std::vector{2, 1}));
    list.Add("c");
    NextFrame();
    EXPECT_EQ(shown.count(), 4);
    EXPECT_EQ(shown.currentRow(), 1);

    ListBox& combo = controls.List("cmbRemoteHost");
    combo.OnClick = [&](MouseButton) { chosen.push_back(10 + combo.ListIndex()); };
    combo.SetEntries({"x", "x"});
    NextFrame();
    auto& box = Widget<QComboBox>("cmbRemoteHost");
    EXPECT_EQ(box.currentIndex(), -1);
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Down);
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(chosen, (std::vector{2, 1, 10, 11}));
}

TEST_F(Entries, TextsOfStrangersAreNoMarkup) {
    Show();
    controls.Caption("Label22").SetCaption("<b>bold</b>");
    controls.Text("txtAge").SetToolTipText("<img src=x> & more");
    NextFrame();
    EXPECT_EQ(Widget<QLabel>("Label22").textFormat(), Qt::PlainText);
    EXPECT_EQ(Widget<QWidget>("txtAge").toolTip(), QStringLiteral("<qt>&lt;img src=x&gt; &amp; more</qt>"));
}

}  // namespace
}  // namespace veltrix
