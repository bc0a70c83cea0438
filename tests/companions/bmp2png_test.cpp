// Bmp2Png as the station and its user run it.

#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <filesystem>
#include <tuple>

#include "display/bitmap_file.h"
#include "display/colours.h"
#include "support/running_program.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

/// A bitmap with rows that need filling up, each pixel another colour.
std::string Sample() {
    Bitmap image{5, 3, {}};
    for (int i = 0; i < 15; ++i) image.pixels.push_back(Rgb(16 * i, 255 - i, i));
    return BmpBytes(image);
}

TEST(Bmp2Png, KeepsEveryPixelAndTheFolderOfEachName) {
    const ScratchFolder folder;
    folder.Put("picture5.bmp", Sample());
    folder.Put("sub/Map.2.BMP", Sample());
    folder.Put("-odd.bmp", Sample());
    folder.Put("picture5.png", "an old picture");
    RunningProgram program("Bmp2Png", {"picture5.bmp", "sub/Map.2.BMP", "--", "-odd.bmp"}, folder.Text(),
                           {"QT_QPA_PLATFORM=", "DISPLAY="});
    EXPECT_EQ(program.Wait(), 0);
    EXPECT_EQ(program.Output() + program.Errors(), "");
    for (const char* const name : {"picture5.png", "sub/Map.2.png", "-odd.png"}) {
        const QImage image(QString::fromStdString((folder / name).string()), "PNG");
        ASSERT_EQ(image.size(), QSize(5, 3)) << name;
        for (int i = 0; i < 15; ++i)
            EXPECT_EQ(image.pixel(i % 5, i / 5), qRgb(16 * i, 255 - i, i)) << name << " " << i;
    }
    using Files = std::filesystem::directory_iterator;
    EXPECT_EQ(std::distance(Files(folder.Path()), Files()), 5) << "a temporary file stays";
}

TEST(Bmp2Png, ConvertsTheOthersAndLeavesWhatItCannotReplace) {
    const ScratchFolder folder;
    folder.Put("good.bmp", Sample());
    folder.Put("cut.bmp", Sample().substr(0, 80));
    folder.Put("cut.png", "an old picture");
    folder.Put("text.bmp", "BM, but no bitmap at all");
    folder.Put("empty.bmp", "");
    RunningProgram program("Bmp2Png", {"cut.bmp", "text.bmp", "empty.bmp", "missing.bmp", ".", "good.bmp"},
                           folder.Text());
    EXPECT_EQ(program.Wait(), 64) << "a name that does not end in .bmp: nothing is converted";
    EXPECT_FALSE(std::filesystem::exists(folder / "good.png"));

    RunningProgram again("Bmp2Png", {"cut.bmp", "text.bmp", "empty.bmp", "missing.bmp", "good.bmp"},
                         folder.Text());
    EXPECT_EQ(again.Wait(), 1);
    EXPECT_EQ(std::ranges::count(again.Errors(), '\n'), 4) << again.Errors();
    EXPECT_NE(again.Errors().find("missing.bmp: No such file"), std::string::npos) << again.Errors();
    EXPECT_TRUE(std::filesystem::exists(folder / "good.png"));
    EXPECT_EQ(folder.Content("cut.png"), "an old picture");
    EXPECT_FALSE(std::filesystem::exists(folder / "text.png"));
}

TEST(Bmp2Png, AnswersWrongUseWithOneLine) {
    const std::tuple<std::vector<std::string>, const char*> table[] = {
        {std::vector<std::string>(), "missing"},
        {{"--fast", "a.bmp"}, "unknown option '--fast'"},
        {{"a.png"}, "'a.png'"}};
    for (const auto& [arguments, says] : table) {
        RunningProgram program("Bmp2Png", arguments);
        EXPECT_EQ(program.Wait(), 64) << says;
        EXPECT_NE(program.Errors().find(says), std::string::npos) << program.Errors();
        EXPECT_EQ(std::ranges::count(program.Errors(), '\n'), 1) << program.Errors();
    }
}

}  // namespace
}  // namespace veltrix
