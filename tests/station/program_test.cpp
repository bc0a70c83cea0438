// The real station program, without a screen, fed and operated from outside.

#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "platform/qt/control_client.h"
#include "support/running_program.h"
#include "support/samples.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

std::vector<std::string> Words(const std::string& line) {
    std::istringstream words(line);
    return {std::istream_iterator<std::string>(words), {}};
}

struct Program {
    ScratchFolder folder;
    std::string control = folder.Text() + "/control";

    std::vector<std::string> Arguments() const {
        return Words("--headless --dir " + folder.Text() + "/station --settings " + folder.Text() +
                     "/settings.ini --address 127.0.2.1 --recorder none --print detections --control " +
                     control);
    }
    std::string Ask(const std::string& request) const {
        const ControlAnswer answer = AskStation(control, request);
        return answer.lines.empty() ? answer.failure : answer.lines.front();
    }
    /// Brings a block as a recorder does, under another name first, and waits until the station has taken it.
    bool Feed(const Samples& samples) const {
        folder.Put("station/audio.tmp", BytesOf(samples));
        std::filesystem::rename(folder / "station/audio.tmp", folder / "station/audio.dat");
        return WaitFor([&] { return !std::filesystem::exists(folder / "station/audio.dat"); });
    }
    /// The strike logs of all days, for a test may run at midnight.
    std::string Log() const {
        std::string text;
        const std::set<std::filesystem::path> days(
            std::filesystem::directory_iterator(folder / "station/Data"), {});
        for (const auto& day : days) text += folder.Content(day.string());
        return text;
    }
};

TEST(VeltrixProgram, HearsLogsPrintsEndsCleanlyAndLosesNothingInAKill) {
    const Program program;
    RunningProgram station("veltrix", program.Arguments());
    ASSERT_TRUE(station.HasPrinted("\n"));
    const std::string greeting = station.Output();
    EXPECT_EQ(greeting.find("Veltrix V"), 0U) << greeting;
    const std::string place = "folder " + program.folder.Text() + "/station, address 127.0.2.1, ports 4711";
    EXPECT_NE(greeting.find(place), std::string::npos) << greeting;
    // The blocks of the first seconds may be thrown away: an earlier recorder's would come then.
    EXPECT_TRUE(WaitFor([&] { return program.Feed(Burst(77)) && !program.Log().empty(); }));
    EXPECT_TRUE(program.Feed(Burst(33)));
    EXPECT_EQ(program.Ask("set txtStationName Bravo"), "ok");
    EXPECT_EQ(program.Ask("save Picture5 before.bmp"), "ok");
    EXPECT_EQ(station.Terminate(), 0);
    for (const char* const bearing : {",077.0,", ",033.0,"})
        EXPECT_NE(program.Log().find(bearing), std::string::npos) << program.Log();
    EXPECT_EQ(station.Output(), greeting + program.Log());
    EXPECT_EQ(station.Errors(), "");
    EXPECT_FALSE(std::filesystem::exists(program.control));

    std::string saved = "Bravo";
    for (const char* const next : {"Charlie", "Delta"}) {
        RunningProgram killed("veltrix", program.Arguments());
        ASSERT_TRUE(killed.HasPrinted("\n"));
        EXPECT_EQ(program.Ask("get txtStationName"), "= " + saved);
        EXPECT_EQ(program.Ask("save Picture5 after.bmp"), "ok");
        EXPECT_TRUE(program.folder.Content("station/before.bmp") ==
                    program.folder.Content("station/after.bmp"));
        EXPECT_EQ(program.Ask("set txtStationName " + (saved = next)), "ok");
        killed.Kill();
    }
    RunningProgram again("veltrix", program.Arguments());
    ASSERT_TRUE(again.HasPrinted("\n"));
    RunningProgram ctl("veltrix-ctl", {"--control", program.control, "get", "txtStationName"});
    EXPECT_EQ(ctl.Wait(), 0);
    EXPECT_EQ(ctl.Output(), "= Delta\nok\n");
    EXPECT_EQ(program.Ask("quit"), "ok");
    EXPECT_EQ(again.Wait(), 0);
}

TEST(VeltrixProgram, ADisplayThatHasGoneLeavesItWithoutAWindow) {
    const ScratchFolder folder;
    RunningProgram station("veltrix",
                           Words("--dir " + folder.Text() + " --settings " + folder.Text() +
                                 "/s.ini --address 127.0.2.2 --recorder none"),
                           {}, {"QT_QPA_PLATFORM=xcb", "DISPLAY=:4242"});
    EXPECT_TRUE(station.HasPrinted("\n"));
    EXPECT_EQ(station.Terminate(), 0);
    EXPECT_EQ(station.Errors(),
              "veltrix: the display cannot be opened, so the station runs without a window\n");
}

TEST(VeltrixProgram, AWrongCommandLineIsOneClearLine) {
    const ScratchFolder folder;
    folder.Put("file", "");
    const std::string here = folder.Text();
    // The exit code before each.
    std::vector<std::string> lines = {"64 --colour",     "64 --print all",         "64 --dir",
                                      "64 --headless=1", "64 --address localhost", "64 --address 1.2.3.256"};
    lines.push_back("64 --headless --settings " + here + " --dir " + here);
    lines.push_back("73 --headless --dir " + here + "/file/below");
    lines.push_back("73 --headless --dir " + here + " --settings " + here + "/s.ini --control " + here);
    for (const std::string& line : lines) {
        RunningProgram station("veltrix", Words(line.substr(3)));
        EXPECT_EQ(std::to_string(station.Wait()), line.substr(0, 2)) << station.Errors();
        EXPECT_EQ(station.Errors().find('\n') + 1, station.Errors().size()) << station.Errors();
        EXPECT_EQ(station.Output(), "");
    }
    EXPECT_EQ(RunningProgram("veltrix-ctl", {"--control", here + "/nobody", "list"}).Wait(), 1);
}

}  // namespace
}  // namespace veltrix
