// What goes out to other programs: the alarm and the published pictures.

#include <gtest/gtest.h>

#include "display/bitmap_file.h"
#include "output/class_alarm.h"
#include "output/publishing.h"
#include "support/recording_errors.h"
#include "support/test_platform.h"

namespace veltrix {
namespace {

TEST(ClassAlarm, FollowsTheRateOfTheLastTenNearStrikes) {
    TestPlatform computer;
    RecordingErrors errors;
    ClassAlarm alarm(computer.clock, computer.files, computer.processes, errors);
    const auto& started = computer.processes.started;
    // Strikes `gap` ms apart, near or far: for each "!" where it gave the alarm, else "-".
    const auto after = [&](const std::string& strikes, int gap) {
        std::string outcome;
        for (const char c : strikes) {
            const std::size_t before = started.size();
            alarm.Update(0, 0, c == 'n' ? 0.05 : 0.5, -0.1);
            outcome += started.size() > before ? '!' : '-';
            computer.clock.Advance(gap);
        }
        return outcome;
    };
    alarm.Init(13, 25);
    computer.files.MakeFolder("alarm.exe");
    EXPECT_EQ(after("nnn", 6000), "---") << "a folder is no program";
    computer.files.Put("Alarm.exe", "");
    // Ten a minute read as 15, 13.3, 12.5, 12 ... 11.1.
    EXPECT_EQ(after("nnnnnnnnn", 6000), "!--------");
    EXPECT_EQ(started.at(0).at(1), "13.3;12.4;00.05000;-000.10000;2024/06/15 12:00:18");
    EXPECT_EQ(computer.processes.askedToClose, std::vector<long long>{1001});
    EXPECT_EQ(after("fnfffnffff", 100), "----------") << "far ones count for nothing";
    EXPECT_EQ(after("nnnfn", 1000), "!!!-!");
    computer.processes.missing = {"Alarm.exe"};
    EXPECT_EQ(after("n", 1000), "-");
    EXPECT_EQ(errors.reports.size(), 1u) << "the tick goes on";
    computer.processes.missing.clear();
    alarm.Init(13, 12);
    EXPECT_EQ(after("nnnn", 1000), "----") << "farther than the new limit";
    alarm.Init(13, 13);
    EXPECT_EQ(after("nn", -60000), "!-") << "what was counted stays; a clock set back gives no rate";
}

TEST(Publishing, WhatFailsCostsNothingElse) {
    TestPlatform computer;
    const auto& started = computer.processes.started;
    Surface surface(2, 1, computer.glyphs, {0, 0, 2, 1});
    std::string drawn, ftpTo;
    const auto draw = [&] {
        surface.PSet(0, 0, Red);
        throw Failure(errors::Overflow, drawn += "d", "Test");
    };
    Publishing publishing({computer.platform, surface, surface, surface,
                           [&]() -> Surface& { return surface; }, draw, draw, draw, [&] { return ftpTo; }});
    const auto publish = [&](int times) {
        while (times-- > 0) publishing.Publish();
        return drawn;
    };
    for (const char* const name : {"picture1.png", "Bmp2Png.exe", "publish.cmd"})
        computer.files.Put(name, "");
    computer.files.MakeFolder("publish.bat");
    computer.files.FailOn(FileOperation::WriteWhole, "picture5.bmp", errors::DiskFull);
    EXPECT_EQ(publish(9), "");
    EXPECT_EQ(publish(4), "ddd");
    EXPECT_EQ(computer.files.Content("PicSync.bmp"), BmpBytes(surface.Image()));
    EXPECT_EQ(computer.files.List("", "*.png;*.bmp").size(), 3);
    EXPECT_EQ(started.at(2), (std::vector<std::string>{".\\Bmp2Png.exe", "picture1.bmp"}));
    computer.files.Put("publish.bat", "");
    publishing.cmdTestFtp_Click();
    EXPECT_EQ(started.back(), std::vector<std::string>{".\\publish.bat"});
    computer.processes.missing = {".\\publish.bat"};
    ftpTo = "-n  host";
    EXPECT_EQ(publish(6), "dddddd");
    EXPECT_EQ(publish(1), "ddddddddd");
    EXPECT_EQ(started.back(), (std::vector<std::string>{"ftp", "-s:publish.cmd", "-n", "host"}));
}

}  // namespace
}  // namespace veltrix
