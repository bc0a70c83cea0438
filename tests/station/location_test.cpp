// From detections of two stations to strikes on the map.

#include <cmath>
#include <string>

#include "located_strikes.h"

namespace veltrix {
namespace {

struct LocationTest : LocatedStrikes {
    std::string DotsNear(const MapPoint& place, int reach) {
        for (int dx = -reach; dx <= reach; ++dx)
            for (int dy = -reach; dy <= reach; ++dy)
                if (station.Ask("point Picture4 " + std::to_string(std::lround(place.dX) + dx) + " " +
                                std::to_string(std::lround(place.dY) + dy)) == "= 16776960|ok")
                    return "pen";
        return "none";
    }
};

TEST_F(LocationTest, StrikesOfTwoStationsStandOnTheMapInTheLogAndAfterARestart) {
    computer.store.SaveSetting("setting", "Log", "1");
    Connect();
    for (int i = 0; i < 15; ++i) Strike();
    ASSERT_GE(fixes.size(), 8u);
    EXPECT_EQ(fixes.back().substr(0, 3) + fixes.back().substr(fixes.back().size() - 6), "fix, Peer");
    EXPECT_EQ(station.Get("lblStrikeCount4"), std::to_string(fixes.size()));
    EXPECT_EQ(DotsNear(Place(), 3), "pen");
    const std::string log = computer.files.Content("Data\\Corr_20240615 Station 01.csv");
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(log, '\n')), fixes.size());
    station.form.Form_Unload();

    computer.clock.Advance(60'000);
    TestStation again{computer, {}};
    again.Start();
    int seen = 0;
    const Bitmap map = *again.form.Controls().Require("Picture4").Snapshot();
    for (const ColourValue colour : map.pixels) seen += colour == Cyan;
    EXPECT_EQ(seen, 4) << "the head of the map is back";
}

TEST_F(LocationTest, WhatIsDoubtfulIsNotPlotted) {
    Connect();
    for (int i = 0; i < 10; ++i) Strike();
    const auto plotted = [this] { return std::stoi(station.Get("lblStrikeCount4")); };
    const auto isPlotted = [&](const std::string& setting, double remoteError = 0) {
        station.Ask(setting);
        const int before = plotted();
        Strike(remoteError);
        return plotted() > before;
    };
    EXPECT_TRUE(isPlotted("get txtAge"));
    EXPECT_FALSE(isPlotted("set txtAngularSeparation 90")) << "the bearings cross too flat";
    EXPECT_EQ(station.Get("lblRemoteSampleCount(0).ForeColor"), std::to_string(Yellow));
    EXPECT_FALSE(isPlotted("set txtMinStrength 5")) << "too weak";
    station.Ask("set txtAngularSeparation 10");
    EXPECT_FALSE(isPlotted("get txtAge")) << "still too weak";
    EXPECT_TRUE(isPlotted("set txtMinStrength 80"));
    EXPECT_TRUE(isPlotted("set OptionTOAFilter 1")) << "as the others were";
    EXPECT_FALSE(isPlotted("get txtAge", 20)) << "the time of arrival fits no strike there";
}

/// Tables and corrections move what is plotted; a reset takes them back.
TEST_F(LocationTest, CalibrationTurnsTheBearings) {
    std::string table;
    for (int i = 0; i < 18; ++i) table += std::to_string(10 * i + 5) + ";" + std::to_string(10 * i) + "\n";
    computer.files.Put("pSD\\pSD0000000000.dat", table);
    Connect();
    for (int i = 0; i < 10; ++i) Strike();
    const double straight = CalcBearings(52, 6, StrikeLatitude, StrikeLongitude).dBearing1;
    const auto turned = [&] {
        Strike();
        return ValNeutral(station.Get("txtLocal")) - straight;
    };
    EXPECT_NEAR(turned(), 5, 0.3) << "by the table that the position names";
    station.Ask("set txtLocalCorrectionAngle -12,5");
    EXPECT_NEAR(turned(), -7.5, 0.3);
    station.Ask("set OptionCalibLocal 1");
    station.Ask("click cmdClearpSD");
    EXPECT_NEAR(turned(), -12.5, 0.3) << "the table is the identity again";
    EXPECT_EQ(computer.files.Content("pSD\\pSD0000000000.dat").substr(0, 10), "0;0\n10;10\n");
    station.Ask("set OptionCalibrateAngle 1");
    station.Ask("click cmdClearpSD");
    EXPECT_NEAR(turned(), 0, 0.3);
    station.Ask("set SSTab3 Calib");
    station.Ask("set SSTab4 Drag && Drop");
    EXPECT_EQ(station.Ask("point PicpSD 50 0"), "= 16777215|ok");
}

TEST_F(LocationTest, TheSyncPageStepsAndMovesItsFigures) {
    Connect();
    const auto figures = [this] {
        return station.Get("lblAvgDiffTime(1).Visible") + station.Get("txtDiffTime(1).Visible");
    };
    station.Ask("click PicSync(1)");
    EXPECT_EQ(figures(), "00");
    station.Ask("click lblAvgDiffTime(1)");
    EXPECT_EQ(figures(), "11");
    station.Ask("click PicSync(1)");
    EXPECT_EQ(figures(), "11");
    EXPECT_FALSE(station.form.Controls().Require("txtDiffTime(1)").Opaque());
    station.ExpectShown("PicSync(0).Visible=1|PicSync(1).Visible=0");
    station.Ask("click cmdLeft");
    station.ExpectShown("PicSync(0).Left=-1000|lblAvgDiffTime(0).Left=-933");
    station.Ask("click cmdRight");
    station.ExpectShown("PicSync(0).Left=0|lblAvgDiffTime(0).Left=67");
}

}  // namespace
}  // namespace veltrix
