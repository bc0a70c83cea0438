// veltrix-map as a user runs it.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <tuple>

#include "support/running_program.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

constexpr std::size_t MapBytes = 54 + 557 * 1672;

TEST(MapProgram, WritesAMapAndItsGeometry) {
    const ScratchFolder folder;
    RunningProgram plain("veltrix-map", {"--latitude", "48.2", "--longitude=9", "--radius", "600.5"},
                         folder.Text(), {"QT_QPA_PLATFORM=", "DISPLAY="});
    EXPECT_EQ(plain.Wait(), 0) << plain.Errors();
    EXPECT_EQ(plain.Output() + plain.Errors(), "");
    EXPECT_EQ(folder.Content("MAP_600.5.BMP").size(), MapBytes);
    EXPECT_EQ(folder.Content("MAP_600.5.dat"), "Radius: 600.5\nLongitude: 9\nLatitude: 48.2\n");
}

TEST(MapProgram, AnswersWrongUseWithOneLine) {
    const ScratchFolder folder;
    const std::tuple<std::vector<std::string>, int, const char*> table[] = {
        {{}, 64, "--latitude is missing"},
        {{"--latitude"}, 64, "--latitude needs a value"},
        {{"--latitude", "50N", "--longitude", "0"}, 64, "not '50N'"},
        {{"--latitude", "50", "--longitude", "nan"}, 64, "-180 to 180"},
        {{"--latitude", "50", "--longitude", "0", "--output", "map.png"}, 64, "ends in .BMP"},
        {{"--latitude", "50", "--longitude", "0", "--colour"}, 64, "unknown option '--colour'"},
        {{"--latitude", "50", "--longitude", "0", "--output", "missing/m.bmp"}, 1, "m.bmp"},
    };
    for (const auto& [arguments, code, says] : table) {
        RunningProgram program("veltrix-map", arguments, folder.Text());
        EXPECT_EQ(program.Wait(), code) << says;
        EXPECT_NE(program.Errors().find(says), std::string::npos) << says << ": " << program.Errors();
        EXPECT_EQ(std::ranges::count(program.Errors(), '\n'), 1) << program.Errors();
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
    RunningProgram help("veltrix-map", {"--help"});
    EXPECT_EQ(help.Wait(), 0);
    EXPECT_NE(help.Output().find("--radius KM"), std::string::npos);
}

}  // namespace
}  // namespace veltrix
