// What a whole station gives to other programs: pictures, the alarm, the clock's record, addresses.

#include <algorithm>

#include "display/bitmap_file.h"
#include "located_strikes.h"

namespace veltrix {
namespace {

struct OutgoingTest : LocatedStrikes {
    std::size_t Started(const std::string& program) const {
        return static_cast<std::size_t>(std::ranges::count(computer.processes.started, program,
                                                           [](const auto& words) { return words[0]; }));
    }
};

TEST_F(OutgoingTest, PicturesGoOutEveryTenMinutes) {
    computer.files.Put("publish.bat", "");
    Begin();
    Wait(599 - 3.5);
    EXPECT_EQ(Started(".\\publish.bat"), 0u);
    Wait(2);
    EXPECT_EQ(Started(".\\publish.bat"), 1u);
    for (const char* const view : {"Picture1", "Picture4", "Picture5", "PicSync(0)"}) {
        std::string file = view;
        std::erase_if(file, [](char c) { return c == '(' || c == '0' || c == ')'; });
        EXPECT_EQ(computer.files.Content(file + ".bmp"),
                  BmpBytes(*station.form.Controls().Require(view).Snapshot()));
    }
    Wait(180);
    station.Ask("click cmdTestFtp");
    EXPECT_EQ(Started(".\\publish.bat"), 2u) << "at once";
    Wait(418);
    EXPECT_EQ(Started(".\\publish.bat"), 2u);
    Wait(4);
    EXPECT_EQ(Started(".\\publish.bat"), 3u) << "and then as if nothing had been";
}

TEST_F(OutgoingTest, StrikesNearTheChosenPlaceStartTheAlarmProgram) {
    computer.files.Put("Alarm.exe", "");
    Connect();
    TestStation::ForEach("txtAlarmRate=1|txtAlarmDistance=60|txtAlarmLatitude=54|txtAlarmLongitude=11",
                         [&](const std::string& box, const std::string& text) {
                             station.Ask("set " + box + " " + text);
                             EXPECT_EQ(station.Get(box), text);
                         });
    for (int i = 0; i < 25; ++i) Strike();
    const std::size_t alarms = Started("Alarm.exe");
    EXPECT_EQ(alarms, fixes.size() - 2) << "from the third strike on";
    EXPECT_EQ(computer.processes.askedToClose.size(), alarms);
    EXPECT_EQ(computer.processes.started.back().size(), 2u) << "one argument";
    station.Ask("click cmdAsLocal");
    station.ExpectShown("txtAlarmLatitude=52|txtAlarmLongitude=6");
    Strike();
    EXPECT_EQ(Started("Alarm.exe"), alarms) << "far from home";
    EXPECT_EQ(computer.store.GetSetting("Setting", "AlarmLatitude", ""), "52");
}

TEST_F(OutgoingTest, TheSampleClockIsShownTheNextMinuteAndKeptAtTheEnd) {
    computer.files.Put("ClockDrift.dat", "1\n45000;1000\n45001;1905121000\n");
    Tie(computer, "1", "");
    TestStation later{computer, {}};
    later.Start();
    EXPECT_EQ(later.Get("txtLocalClockDrift"), "");
    Wait(63);
    later.ExpectShown("txtLocalClockDrift=86596363|txtRemoteClockDrift=0|txtDiffLocalRemote=86596363");
    later.Feed(Burst(30));
    later.form.Form_Unload();
    const std::string record = computer.files.Content("ClockDrift.dat");
    EXPECT_TRUE(record.starts_with("2\n45000;1000\n45001;1905121000\n45458.5")) << record.substr(0, 60);
}

TEST_F(OutgoingTest, TheAddressOfAConnectionIsOfferedForTheIgnoreList) {
    Begin();
    Peer visitor(computer, "10.0.0.9");
    visitor.Visit();
    const auto choose = [&](const std::string& entry) {
        EXPECT_EQ(station.Ask("set CmbStateServer " + entry), "ok");
        return computer.clipboard.text;
    };
    EXPECT_EQ(choose("1_?S_10.0.0.9"), "10.0.0.9");
    EXPECT_EQ(Started("notepad"), 0u) << "there is no list";
    computer.files.Put("IgnoreList.txt", "10.0.0.8\n");
    EXPECT_EQ(choose("2____"), "");
    EXPECT_EQ(Started("notepad"), 1u);
    computer.files.Put("IgnoreList.txt", "10.0.0.9\n");
    choose("1_?S_10.0.0.9");
    EXPECT_EQ(Started("notepad"), 1u) << "it stands there already";
    Wait(25);
    EXPECT_FALSE(visitor.IsUp()) << "thrown out";
}

}  // namespace
}  // namespace veltrix
