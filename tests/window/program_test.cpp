// The real station program with its window, and where there is no screen for one.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/qt/control_client.h"
#include "support/running_program.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

struct Program {
    ScratchFolder folder;

    std::vector<std::string> Arguments() const {
        return {"--dir",      folder.Text() + "/station",
                "--settings", folder.Text() + "/veltrix.ini",
                "--address",  "127.0.2.9",
                "--recorder", "none",
                "--control",  folder.Text() + "/control"};
    }
    std::string Ask(const std::string& request) const {
        const ControlAnswer answer = AskStation(folder.Text() + "/control", request);
        return answer.lines.empty() ? answer.failure : answer.lines.front();
    }
};

TEST(WindowedProgram, IsOperatedFromOutsideAndEndsInItsOrder) {
    const Program program;
    RunningProgram station("veltrix", program.Arguments(), {}, {"QT_QPA_PLATFORM=offscreen"});
    ASSERT_TRUE(station.HasPrinted("Veltrix V"));
    EXPECT_EQ(program.Ask("set txtTresholdQuotient 101"), "ok");
    EXPECT_EQ(program.Ask("get txtTresholdQuotient.ForeColor"), "= 255");
    EXPECT_EQ(program.Ask("click Picture1"), "ok");
    EXPECT_EQ(program.Ask("get Picture4.Visible"), "= 1");
    EXPECT_EQ(station.Terminate(), 0);
    EXPECT_NE(program.folder.Content("window.ini").find("Width="), std::string::npos) << "the window's place";
    EXPECT_FALSE(program.folder.Content("station/pXY.dat").empty()) << "what the form saves at its end";
}

TEST(WindowedProgram, RunsWithoutAWindowWhereThereIsNoScreen) {
    const Program program;
    RunningProgram station("veltrix", program.Arguments(), {},
                           {"QT_QPA_PLATFORM=", "DISPLAY=", "WAYLAND_DISPLAY="});
    ASSERT_TRUE(station.HasPrinted("Veltrix V"));
    EXPECT_EQ(station.Terminate(), 0);
    EXPECT_EQ(station.Errors(), "veltrix: there is no display, so the station runs without a window\n");
    EXPECT_FALSE(std::filesystem::exists(program.folder / "window.ini"));
}

}  // namespace
}  // namespace veltrix
