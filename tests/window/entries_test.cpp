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
    const std::tuple<const char*, const char*, const char*, double, bool, int> table[] = {
        {"", "52.1", "52.10000", 52.1, false, 4},
        {"", "-", "-", 0, true, 1},
        {"", "-7.25", "-7.25000", -7.25, false, 5},
        {"", "012", "12.00000", 12, false, 2},       // a zero went before the cursor
        {"1.00000", "91", "911.00000", 0, true, 2},  // typed before what stands there
    };
    TextBox& box = controls.Text("txtLatitude");
    double stored = 0;
    BindNumber(box, stored);
    Show();
    controls.Tabs("SSTab1").SetTab(4);
    NextFrame();
    auto& edit = Widget<QLineEdit>("txtLatitude");
    for (const auto& [before, keys, shown, wanted, isRefused, cursor] : table) {
        SCOPED_TRACE(keys);
        stored = 0;
        box.SetText(before);
        box.SetForeColor(White);
        NextFrame();
        edit.setFocus();
        edit.setCursorPosition(0);
        QTest::keyClicks(&edit, QString::fromLatin1(keys));
        EXPECT_EQ(edit.text().toStdString(), shown);
        EXPECT_EQ(box.Text(), shown);
        EXPECT_EQ(stored, wanted);
        EXPECT_EQ(box.ForeColor(), isRefused ? Red : White);
        EXPECT_EQ(edit.cursorPosition(), cursor);
    }
    box.SetText("");
    QTest::keyClicks(&edit, QStringLiteral("1"));
    edit.selectAll();
    QTest::keyClick(&edit, Qt::Key_Delete);
    EXPECT_EQ(edit.text(), QString()) << "an emptied box stays empty";
    EXPECT_EQ(box.ForeColor(), Red);
}

TEST_F(Entries, TextIsReadableOnEveryPaletteAndBackgroundAndARefusedOneIsRed) {
    controls.Text("txtAge").OnEntry = [] {};
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
    TextBox& box = controls.Text("txtStateClient");
    for (const ColourValue background : {White, Yellow, Red, Rgb(0, 128, 0), Rgb(128, 128, 128)})
        for (const ColourValue text : {White, Red, Black}) {
            box.SetBackColor(background);
            box.SetForeColor(text);
            NextFrame();
            const QPalette shown = Widget<QWidget>("txtStateClient").palette();
            EXPECT_EQ(shown.color(QPalette::Base), ToColor(background));
            EXPECT_GE(Contrast(shown.color(QPalette::Base), shown.color(QPalette::Text)), 4.5);
        }
}

TEST_F(Entries, WhatHasNoHandlerTakesNoEntry) {
    Show();
    auto& button = Widget<QPushButton>("cmdHomePage");
    EXPECT_TRUE(Widget<QLineEdit>("txtAge").isReadOnly());
    EXPECT_FALSE(button.isEnabled() || Widget<QComboBox>("cmbRemoteHost").isEnabled());
    controls.Text("txtAge").OnEntry = [] {};
    controls.Text("txtAge").SetText("30");
    int clicks = 0;
    controls.Push("cmdHomePage").OnClick = [&](MouseButton) { ++clicks; };
    controls.Push("cmdHomePage").SetCaption("Go && see & look");
    NextFrame();
    EXPECT_FALSE(Widget<QLineEdit>("txtAge").isReadOnly());
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
    list.Add("c");
    NextFrame();
    EXPECT_EQ(std::pair(shown.count(), shown.currentRow()), std::pair(4, 1));
    ListBox& combo = controls.List("cmbRemoteHost");
    combo.OnClick = [&](MouseButton) { chosen.push_back(10 + combo.ListIndex()); };
    combo.SetEntries({"x", "x"});
    NextFrame();
    auto& box = Widget<QComboBox>("cmbRemoteHost");
    EXPECT_EQ(box.currentIndex(), -1);
    for (int key = 0; key < 2; ++key) QTest::keyClick(&box, Qt::Key_Down);
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
