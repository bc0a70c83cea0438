// The health of a whole station: what the status bar and the files say after known events.

#include <nlohmann/json.hpp>

#include "station/located_strikes.h"

namespace veltrix {
namespace {

using Json = nlohmann::json;

Json StatsOf(TestPlatform& computer) {
    return Json::parse(computer.files.Content("stats.json"));
}

using Health = LocatedStrikes;

TEST_F(Health, FollowsTheStrikesFromTheDetectorToTheMap) {
    Connect();
    for (int i = 0; i < 30; ++i) Strike();
    ASSERT_GT(fixes.size(), 0U);
    Wait(1);
    EXPECT_EQ(station.Get("lblHealthSound"), "Sound ok");
    EXPECT_EQ(station.Get("lblHealthStrikes"), "Strikes 30/min 30/h");
    EXPECT_EQ(station.Get("lblHealthPeers"), "Peers 1 of 1");
    station.form.Form_Unload();
    const Json stats = StatsOf(computer);
    EXPECT_EQ(stats["running"], false);
    EXPECT_EQ(stats["station"], "Home");
    EXPECT_EQ(stats["sound"]["blocks"], 30);
    EXPECT_EQ(stats["sound"]["frames"], 30 * 300);
    EXPECT_EQ(stats["strikes"]["since_start"], 30);
    EXPECT_EQ(stats["located"]["since_start"], fixes.size());
    EXPECT_GE(stats["paired"]["since_start"], fixes.size());
    EXPECT_EQ(stats["peers"][0]["station"], "Peer");
    EXPECT_EQ(stats["peers"][0]["side"], "client");
    EXPECT_EQ(stats["peers"][0]["address"], "10.0.0.9");
    EXPECT_EQ(stats["peers"][0]["connected"], true);
    EXPECT_NE(computer.files.Content("stats.prom").find("\nveltrix_running 0\n"), std::string::npos);
}

TEST_F(Health, IsWrittenEachMinuteAndAFullDiskIsToldOfOnce) {
    Begin();
    const std::string first = computer.files.Content("stats.prom");
    EXPECT_NE(first, "");
    computer.files.FailOn(FileOperation::WriteWhole, "stats.json", errors::DiskFull, 3);
    Wait(185);
    EXPECT_EQ(computer.files.Content("stats.prom"), first);
    EXPECT_EQ(station.warnings.size(), 1U);
    Wait(60);
    EXPECT_NE(computer.files.Content("stats.prom"), first);
    EXPECT_EQ(StatsOf(computer)["time"], "2024/06/15 12:04:02");
    computer.files.FailOn(FileOperation::WriteWhole, "stats.prom", errors::PermissionDenied, 2);
    Wait(120);
    EXPECT_EQ(station.warnings.size(), 2U) << "it had worked in between";
    EXPECT_EQ(StatsOf(computer)["errors"], 0) << "none of it is for the error log";
    EXPECT_FALSE(computer.files.Exists("log\\VX V1.2.3 log.txt"));
}

TEST_F(Health, TellsWhatIsWrongWithRecorderComputerAndStation) {
    computer.computer.clockSynchronised = false;
    computer.store.SaveSetting("RAMDrive", "Path", "Ram\\");
    Begin();
    EXPECT_EQ(station.Get("lblHealthComputer"), "! Clock not synced");
    EXPECT_EQ(station.Get("lblHealthPeers"), "No peers");
    for (const int lost : {1000, 1200, 100}) {  // before this station, then 200, then by a new recorder
        computer.files.Put("Ram\\SndInput.state", "state=waiting\nframes_lost=" + std::to_string(lost) +
                                                      "\nupdated=" + std::to_string(lost));
        Wait(5);
        computer.files.Put("Ram\\SndInput.state",
                           "state=waiting\nframes_lost=" + std::to_string(lost) + "\n");
        Wait(5);
    }
    EXPECT_EQ(station.Get("lblHealthRate"), "! Lost 300 frames");
    EXPECT_EQ(station.Get("lblHealthSound").substr(0, 16), "! Recorder waits");
    Wait(30);
    EXPECT_EQ(station.Get("lblHealthSound").substr(0, 10), "! No sound") << "the recorder has gone";
    computer.computer.space = DiskSpace{1000, 2000};
    Wait(11);
    EXPECT_EQ(station.Get("lblHealthComputer"), "! Disk 1.0 kB");
}

TEST_F(Health, CountsLinesThatFindTheQueueFull) {
    Begin();
    const auto flood = [this] {
        for (int i = 0; i < 104; ++i) station.form.Consumers().broadcaster->BroadcastDetection({});
        Wait(5);
    };
    flood();
    EXPECT_EQ(station.Get("lblHealthPeers"), "No peers") << "nobody waits for a line";
    Peer listener(computer, "10.0.0.8");
    listener.Visit();
    flood();
    EXPECT_EQ(station.Get("lblHealthPeers"), "! 5 lines dropped");
}

}  // namespace
}  // namespace veltrix
