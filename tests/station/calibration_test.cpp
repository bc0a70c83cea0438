// A calibration session on the map, and marks that are dragged over it.

#include <cmath>
#include <string>

#include "located_strikes.h"

namespace veltrix {
namespace {

struct CalibrationTest : LocatedStrikes {
    static constexpr double PeerError = 8;  // degrees

    /// Strikes that a wrong bearing of the peer has put in the wrong place, and the tab for mending that.
    void BeginSession(const std::string& options) {
        Connect();
        for (int i = 0; i < 12; ++i) Strike(PeerError);
        station.Ask("click Picture7(1)");
        for (const std::string tab : {"SSTab3 Calib", "SSTab4 Drag && Drop"}) station.Ask("set " + tab);
        TestStation::ForEach(options, [&](const std::string& option, const std::string& value) {
            EXPECT_EQ(station.Ask("set " + option + " " + value), "ok") << option;
        });
        wrong = Pen();
        ASSERT_GT(std::hypot(wrong.dX - Place().dX, wrong.dY - Place().dY), 10);
    }
    void Drag(const MapPoint& from, const MapPoint& to) {
        const auto mouse = [&](const std::string& action, const MapPoint& at) {
            EXPECT_EQ(station.Ask("mouse Picture4 " + action + " " + GeneralNumber(at.dX) + " " +
                                  GeneralNumber(at.dY)),
                      "ok");
        };
        mouse("down", from);
        mouse("move", to);
        mouse("up", to);
    }
    double Number(const std::string& control) { return ValNeutral(station.Get(control)); }
    static double Between(const MapPoint& a, const MapPoint& b) {
        return std::hypot(a.dX - b.dX, a.dY - b.dY);
    }

    MapPoint wrong;
};

TEST_F(CalibrationTest, ADragMovesAllRecentStrikesAndUndoTakesThemBack) {
    BeginSession("OptionCalibRemote=1|OptionCalibLocal=0|OptionCalibrateAngle=1");
    const std::size_t before = Dots();
    Drag(wrong, Place());
    EXPECT_LT(Between(Pen(), Place()), 4) << "the map's angles are not quite those of the globe";
    EXPECT_EQ(Dots(), before) << "none is left behind, none is lost";
    const double turn = Number("txtRemoteddA");
    EXPECT_NEAR(turn, -PeerError, 2);
    EXPECT_EQ(station.Get("txtLocalddA"), "0");
    EXPECT_NEAR(Number("txtCorrectionAngle"), turn, 0.0501) << "to a tenth of a degree";
    EXPECT_EQ(computer.store.GetSetting("Setting", "CorrectionAngle", ""), station.Get("txtCorrectionAngle"));
    EXPECT_NE(
        computer.files.Content("StationList.dat").find(FormatNeutral(Number("txtCorrectionAngle"), "00.00")),
        std::string::npos);
    station.Ask("click Picture4");
    EXPECT_EQ(station.Get("txtRemoteddA"), "0") << "a click turns nothing, and leaves the undo alone";
    EXPECT_EQ(station.Ask("click cmdUndopSD"), "ok");
    EXPECT_LT(Between(Pen(), wrong), 1e-9);
    EXPECT_EQ(station.Get("txtCorrectionAngle"), "0");
}

TEST_F(CalibrationTest, WhatTheUserHasEditedOrTypedIsTurnedAndKept) {
    BeginSession("OptionCalibRemote=1|OptionCalibrateAngle=1|OptionCalibrateNonLinAngle=1");
    station.Ask("set txtCorrectionAngle 3");
    station.Ask("click cmdUndopSD");
    EXPECT_EQ(station.Get("txtCorrectionAngle"), "3") << "there was no drag";
    Drag(wrong, Place());
    const double turned = Number("txtCorrectionAngle");
    EXPECT_NEAR(turned, 3 + Number("txtRemoteddA"), 0.0501);
    std::string list = computer.files.Content("StationList.dat");
    const std::string before = FormatNeutral(turned, "00.00");
    ASSERT_NE(list.find(before), std::string::npos);
    computer.files.Put("StationList.dat", list.replace(list.find(before), before.size(), "20.00"));
    Drag(wrong, Place());
    EXPECT_NEAR(Number("txtCorrectionAngle"), 20 + Number("txtRemoteddA"), 0.0501);
}

TEST_F(CalibrationTest, ABendLeavesBackupsOfBothTablesAndTheCorrectionInForce) {
    BeginSession(
        "OptionCalibRemote=0|OptionCalibLocal=1|OptionCalibrateAngle=0|OptionCalibrateNonLinAngle=1");
    const std::string identity = "0;0\n10;10\n";
    Drag(wrong, Place());
    for (const char* const backup : {"Local_pSD.dat", "Remote_pSD.dat"})
        EXPECT_TRUE(computer.files.Content(backup).starts_with(identity)) << backup;
    EXPECT_FALSE(computer.files.Content("pSD\\pSD0000000000.dat").starts_with(identity));
    EXPECT_NE(station.Get("txtLocalCorrectionAngle"), "0");
    const MapPoint bent = Pen();
    EXPECT_GT(Between(bent, wrong), 1);
    station.Ask("click cmdUndopSD");
    EXPECT_LT(Between(Pen(), wrong), 1e-9);
    EXPECT_EQ(station.Get("txtLocalCorrectionAngle"), "0");
    EXPECT_TRUE(computer.files.Content("pSD\\pSD0000000000.dat").starts_with(identity));
}

TEST_F(CalibrationTest, OnlyTheLeftButtonInCalibrationModeTurnsAnything) {
    BeginSession("OptionCalibRemote=1|OptionCalibrateAngle=1");
    station.Ask("mouse Picture4 down 100 100 right");
    station.Ask("mouse Picture4 up 200 100 right");
    EXPECT_EQ(station.Get("txtRemotedX"), "");
    station.Ask("set OptionCalibrateAngle 0");
    Drag(wrong, Place());
    EXPECT_NE(station.Get("txtRemoteddA"), "0") << "what would turn is shown";
    EXPECT_EQ(station.Get("txtCorrectionAngle"), "0.0");
    station.Ask("set OptionCalibrateAngle 1");
    station.Ask("set SSTab3 Setup");
    Drag(wrong, Place());
    EXPECT_EQ(station.Get("txtCorrectionAngle"), "0.0");
    EXPECT_LT(Between(Pen(), wrong), 1e-9);
}

TEST_F(CalibrationTest, TheOverlayLiesAroundTheSelectedStation) {
    BeginSession("");
    EXPECT_EQ(station.Get("ShapeCircle.Visible") + station.Get("lblCalibrationMode.Visible"), "01");
    station.Ask("set SSTab4 Remote");
    double left = 0, top = 0, x = 0, y = 0;
    ASSERT_EQ(std::sscanf(station.Get("Picture7(1)").c_str(), "%lf %lf", &left, &top), 2);
    ASSERT_EQ(std::sscanf(station.Get("LineLBound").c_str(), "%lf %lf", &x, &y), 2);
    EXPECT_LE(std::hypot(x - left - 3.5, y - top - 5.5), 0.75);
    const double r = std::min({x, y, MapSide - x, MapSide - y});
    const auto text = [](double number) { return GeneralNumber(number); };
    EXPECT_EQ(station.Get("ShapeCircle"),
              text(x - r) + " " + text(y - r) + " " + text(2 * r) + " " + text(2 * r) + " 1");
    for (const char* const bound : {"LineLBound", "LineUbound"})
        EXPECT_EQ(station.Get(bound), text(x) + " " + text(y) + " " + text(x) + " " + text(y - r) + " 1");
    station.Ask("set SSTab3 Gain");
    EXPECT_EQ(station.Get("ShapeCircle.Visible") + station.Get("LineUbound.Visible"), "00");
}

TEST_F(CalibrationTest, ADroppedMarkGoesAQuarterOfTheWayAndStaysThereOnAFlatMap) {
    computer.files.Put("MAP_2000.dat", "Radius: 0\n");
    Connect();
    const char* const drops[][3] = {
        {"mouse Picture4 move 100 200", "mouse Picture7(1) drop 300 100", "Picture7(1)"},
        {"mouse Picture4 move 40 40", "mouse Picture6 drop 80 120", "Picture6"}};
    const char* const places[] = {"150 175 ", "50 60 "};
    const char* const sections[] = {"MAP_2000.BMPRemote1", "MAP_2000.BMPHome"};
    for (int i = 0; i < 2; ++i) {
        station.Ask(drops[i][0]);
        EXPECT_EQ(station.Ask(drops[i][1]), "ok");
        EXPECT_TRUE(station.Get(drops[i][2]).starts_with(places[i])) << station.Get(drops[i][2]);
        EXPECT_EQ(computer.store.GetSetting(sections[i], "X", "") + " " +
                      computer.store.GetSetting(sections[i], "Y", "") + " ",
                  places[i]);
    }
    station.Ask("set txtAge 31");
    EXPECT_TRUE(station.Get("Picture7(1)").starts_with(places[0])) << "a map drawn anew keeps it there";
}

}  // namespace
}  // namespace veltrix
