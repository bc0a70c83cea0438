// Start of a station, its recorder, its settings and the requests by which it is operated.

#include <array>
#include <set>

#include "display/bitmap_file.h"
#include "station/station_fixture.h"

namespace veltrix {
namespace {

using Start = StationTest;
using Settings = StationTest;

TEST_F(Start, AnEmptyStoreGivesTheDefaultsAndOpensTheLocalStation) {
    computer.files.Put("audio.dat", "left by an earlier run");
    station.Start();
    EXPECT_FALSE(computer.files.Exists("audio.dat"));
    EXPECT_TRUE(computer.files.Exists("Data") && computer.files.Exists("pSD"));
    station.ExpectShown(
        "txtTresholdQuotient=80|txtlThreshold=324|txtStationName=New "
        "Station|txtLatitude=-89.99999|SSTab1=Map|"
        "SSTab2=Local Station|OptionHighPass=1|optStationListUpdate=1|txtMindB=-100|Check1=0");
    std::set<std::string> controls;
    for (const Setting& setting : SettingsTable()) {
        EXPECT_TRUE(controls.emplace(setting.control).second) << setting.control << " is bound twice";
        EXPECT_EQ(station.Get(std::string(setting.control) + ".ForeColor"), "16777215") << setting.control;
    }
}

TEST_F(Start, TheRecorderComesAfterASecondAndItsFirstBlockIsThrownAway) {
    computer.store.SaveSetting("RAMDrive", "Path", "R:\\");
    station.Start();
    for (const char* const name : {"audio.dat", "audio.tmp"}) computer.files.Put(name, "stale");
    // While the station waits, the recorder brings its first block.
    computer.processes.onStart = [&] {
        EXPECT_TRUE(computer.files.AllFiles().empty()) << "what an earlier recorder left";
        EXPECT_EQ(computer.clock.Elapsed(), 1000);
        computer.files.Put("audio.dat", BytesOf(Burst(10)));
    };
    computer.loop.Run(1000);
    EXPECT_EQ(computer.clock.Elapsed(), 2000) << "a second for the first block";
    EXPECT_EQ(computer.processes.started,
              (std::vector<std::vector<std::string>>{{"SndInput.exe", "/ch=2", "/dt=2", "/gain=1",
                                                      "/maxsize=128K", "/sr=22050", "/of=R:\\audio.dat"}}));
    EXPECT_TRUE(computer.files.AllFiles().empty());
}

TEST_F(Start, WhatTimersDoWhileTheFormIsLoadingDoesNoHarm) {
    computer.store.SaveSetting("RAMDrive", "Path", "R:\\");
    computer.store.SaveSetting("Setting", "strPrevDate", "2024-06-14");
    const Bitmap plot{557, 557, std::vector<ColourValue>(557 * 557, Red)};
    computer.pictures.all["picture5.bmp"] = plot;
    station.form.Form_Initialize();
    computer.loop.Run(2100);  // as long as a slow computer takes to build its window
    station.form.Form_Load();
    EXPECT_EQ(computer.processes.started.at(0).back(), "/of=R:\\audio.dat");
    EXPECT_FALSE(computer.files.Exists("picture5yesterday.bmp"));
    computer.loop.Run(1100);
    const std::string yesterday = computer.files.Content("picture5yesterday.bmp");
    EXPECT_TRUE(yesterday.starts_with(BmpBytes(plot).substr(0, 540 * 557 * 3)))
        << "all but the caption's rows";
    EXPECT_EQ(station.Ask("point Picture5 1 1"), "= 0|ok") << "not the picture that was loaded at start";
}

TEST_F(Settings, EveryChangeIsSavedAtOnceAndBackAfterARestart) {
    const std::string entries =
        "txtTresholdQuotient=75|txtThresholdOffset=-3|OptionAutoDetectionWindow=1|OptionInhibit=1|Check2=1|"
        "txtLatitude=52.12345|txtStationName=Alpha|txtAlarmLatitude=51,5|txtAnnouncement=  hello; there  |"
        "txtMindB=-90|optStationListUpdate=0";
    station.Start();
    TestStation::ForEach(entries + "|OptionHighPass=0",
                         [&](const std::string& control, const std::string& text) {
                             EXPECT_EQ(station.Ask("set " + control + " " + text), "ok") << control;
                         });
    EXPECT_EQ(computer.store.GetSetting("setting", "highpass", "?"), "0");
    TestStation again{computer, {}};
    again.Start();
    again.ExpectShown(entries + "|OptionHighPass=1|SSTab1=Gyrel");  // the filter is on after each start
}

TEST_F(Settings, ARefusedTextTurnsRedAndTheValueInForceStays) {
    station.Start();
    computer.store.saves = 0;
    const auto expectColour = [&](const std::string& entries, const char* colour) {
        TestStation::ForEach(entries, [&](const std::string& control, const std::string& text) {
            EXPECT_EQ(station.Ask("set " + control + " " + text), "ok");
            EXPECT_EQ(station.Get(control + ".ForeColor"), colour) << control << " " << text;
        });
    };
    for (const std::string text : {"101", "0", "7.5", "-", "abc", "inf", "1e308", "1e999"})
        expectColour("txtTresholdQuotient=" + text, "255");
    expectColour("txtThresholdOffset=6|txtAge=1441|txtLatitude=90.5|txtLatitude=52.1234567|txtLatMin=60",
                 "255");
    expectColour("txtClockDrift=90000001|txtAngularSeparation=-1", "255");
    EXPECT_EQ(computer.store.saves, 0);
    EXPECT_EQ(station.Get("txtlThreshold"), "324");
    expectColour("txtTresholdQuotient=1|txtTresholdQuotient=100|txtTresholdQuotient= 070|txtAge=7 dB",
                 "16777215");
    expectColour("txtLatitude=52.12345|txtAngularSeparation=1,5", "16777215");
    station.ExpectShown("txtTresholdQuotient=70|txtAge=7|txtlThreshold=1026");
}

TEST_F(Start, NeitherAMissingRecorderNorAStoreThatDoesNotParseStopsTheStation) {
    computer.processes.missing = {"SndInput.exe"};
    computer.store.SaveSetting("Setting", "TresholdQuotient", "loud");
    computer.store.SaveSetting("Setting", "Latitude", "91");
    computer.store.SaveSetting("setting", "Inhibit", "yes");
    StartAndSettle();
    station.ExpectShown(
        "txtTresholdQuotient=loud|txtTresholdQuotient.ForeColor=255|txtLatitude.ForeColor=255|"
        "OptionInhibit=0");
    EXPECT_EQ(station.warnings.size(), 1U);
    station.Feed(Burst(10));
    EXPECT_EQ(station.LoggedStrikes(), 1);
}

TEST_F(Settings, TheTwoSetsOfPositionBoxesRewriteEachOther) {
    station.Start();
    station.Ask("set txtLatitude 52.67890");
    station.ExpectShown("txtLatDeg=052|txtLatMin=40|txtLatSec=44");
    station.Ask("set txtLatMin 60");
    station.Ask("set txtLatSec 0");
    EXPECT_EQ(computer.store.GetSetting("Setting", "Latitude", ""), "52.66667") << "60 minutes were refused";
    // South and west go through the first set alone.
    station.Ask("set txtLongitude -5.5");
    station.ExpectShown("txtLatitude=52.66667|txtLongDeg=-006|txtLongMin=-30");
}

TEST_F(Settings, TheStoreGetsTheCleanedText) {
    station.Start();
    const std::array<std::string, 5> steps[] = {
        {"txtRAMDrive", "/dev/shm", "RAMDrive", "Path", "/dev/shm\\"},
        {"txtRAMDrive", "", "RAMDrive", "Path", ""},
        {"txtStationName", "a,b;c,d", "Setting", "StationName", "a b c,d"},
        // The limits of the scale clamp each other.
        {"txtMindB", "-200", "Setting", "iDisplayAmpMin", "-120"},
        {"txtMindB", "-40 dB", "Setting", "iDisplayAmpMin", "-40"},
        {"txtMaxdB", "-60", "Setting", "iDisplayAmpMax", "-35"},
        {"txtMaxdB", "-10", "Setting", "iDisplayAmpMax", "-10"},
        {"txtMindB", "-3", "Setting", "iDisplayAmpMin", "-15"},
    };
    for (const auto& [control, text, section, key, saved] : steps) {
        station.Ask("set " + control + " " + text);
        EXPECT_EQ(computer.store.GetSetting(section, key, "?"), saved) << control << text;
        EXPECT_EQ(station.Get(control), text);
    }
}

TEST_F(StationTest, RequestsDoWhatAUserWouldDo) {
    station.Start();
    const std::pair<const char*, const char*> cases[] = {
        {"set txtStationName Bravo two", "ok"},
        {"get txtstationname", "= Bravo two|ok"},
        {"set SSTab3 Drag && Drop", "error SSTab3 does not take 'Drag && Drop'"},
        {"set SSTab4 Drag && Drop", "ok"},
        {"set Check1 2", "error Check1 does not take '2'"},
        {"get Check4.ToolTipText", "= Display 180 ° ambiguity.|ok"},
        {"get txtDiffTime(2)", "error no control named txtDiffTime(2)"},
        {"click txtQ", "error txtQ does nothing on a click"},
        {"", "error the request is empty"},
    };
    for (const auto& [request, answer] : cases) EXPECT_EQ(station.Ask(request), answer) << request;
    EXPECT_NE(station.Ask("list").find("|= txtDiffTime(1) text|"), std::string::npos);
    EXPECT_EQ(station.Ask("quit"), "ok");
    EXPECT_TRUE(computer.loop.HasQuit());
}

}  // namespace
}  // namespace veltrix
