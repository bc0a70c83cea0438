// Pictures: what is loaded pixel by pixel, what is refused, what is built in.

#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QImage>

#include "common/failure.h"
#include "platform/qt/qt_pictures.h"
#include "platform/qt/resources.h"
#include "support/number_raised_by.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

using namespace errors;
using namespace std::literals;

constexpr int Width = 23;
constexpr int Height = 17;

/// Coarse enough for JPG to keep: quarters of four colours.
QImage Quarters() {
    QImage image(Width, Height, QImage::Format_RGB32);
    for (int y = 0; y < Height; ++y)
        for (int x = 0; x < Width; ++x)
            image.setPixelColor(x, y, QColor(x < 11 ? 200 : 30, y < 8 ? 180 : 20, 90));
    return image;
}

std::string Saved(const QImage& image, const char* format) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format, 95));
    return buffer.data().toStdString();
}

/// 3 by 2 pixels, red, green, transparent and the same from behind. The codes are 3 bits wide, each behind a
/// clear.
const std::string Gif =
    "GIF89a\3\0\2\0\x81\0\0"
    "\xff\0\0\0\xff\0\0\0\xff\0\0\0"  // red, green, blue, black
    "\x21\xf9\4\1\0\0\2\0"            // blue is transparent
    "\x2c\0\0\0\0\3\0\2\0\0\2\4\x44\x28\x31\x28"
    "\0\x3b"s;

/// A BMP of RLE8: 4 by 2 pixels, the lower row of colour 1, the upper of colours 0 1 1 0.
std::string PackedBmp() {
    const std::string pixels = "\4\1\0\0\0\4\0\1\1\0\0\1"s;
    return "BM\0\0\0\0\0\0\0\0\x3e\0\0\0\x28\0\0\0\4\0\0\0\2\0\0\0\1\0\x8\0\1\0\0\0"s +
           std::string(1, static_cast<char>(pixels.size())) +
           "\0\0\0\0\0\0\0\0\0\0\0\2\0\0\0\0\0\0\0"
           "\0\0\0\0\xff\xff\xff\0"s +
           pixels;
}

/// Small steps through the head and the tail of a file, larger ones through its middle.
std::size_t StepAt(std::size_t at, const std::string& whole) {
    return at < 40 || at + 10 > whole.size() ? 1 : std::min<std::size_t>(11, whole.size() - at - 9);
}

struct PicturesTest : ::testing::Test {
    ScratchFolder folder;
    QtPictures pictures{folder.Text()};

    /// What loading a file of that content comes to: 0 or the failure's number.
    int NumberFor(const std::string& content) {
        folder.Put("x", content);
        return NumberRaisedBy([&] { pictures.Load("x"); });
    }
};

TEST_F(PicturesTest, EachKindHasItsPixelsWhateverItsName) {
    const std::string bmp = Saved(Quarters(), "bmp");
    const std::string indexed = Saved(Quarters().convertToFormat(QImage::Format_Indexed8), "bmp");
    for (const auto& [content, tolerance] :
         {std::pair{bmp, 0}, {indexed, 0}, {Saved(Quarters(), "jpg"), 25}}) {
        folder.Put("Maps/Europe.GIF", content);
        const Bitmap bitmap = pictures.Load(".\\maps\\europe.gif");
        ASSERT_EQ(std::pair(bitmap.width, bitmap.height), std::pair(Width, Height));
        for (const int y : {0, Height - 1})
            for (const int x : {0, Width - 1}) {
                const ColourValue pixel = bitmap.pixels[static_cast<std::size_t>(y * Width + x)];
                EXPECT_NEAR(pixel & 255, x == 0 ? 200 : 30, tolerance) << x << ' ' << y;
                EXPECT_NEAR(pixel >> 8 & 255, y == 0 ? 180 : 20, tolerance) << x << ' ' << y;
                EXPECT_NEAR(pixel >> 16, 90, tolerance) << x << ' ' << y;
            }
    }
    folder.Put("x.bmp", Gif);
    const ColourValue green = Rgb(0, 255, 0);
    EXPECT_EQ(pictures.Load("x.bmp"), (Bitmap{3, 2, {Red, green, Black, Black, green, Red}}))
        << "transparent is black";
    folder.Put("x.bmp", PackedBmp());
    EXPECT_EQ(pictures.Load("x.bmp"),
              (Bitmap{4, 2, {Black, White, White, Black, White, White, White, White}}));
}

TEST_F(PicturesTest, AFileCutAnywhereIsRefusedAndDamageNeitherCrashesNorTalks) {
    ::testing::internal::CaptureStderr();
    const std::string gifToTheEndOfItsImage = Gif.substr(0, Gif.size() - 1);
    for (const std::string& whole :
         {Saved(Quarters(), "bmp"), Saved(Quarters(), "jpg"), gifToTheEndOfItsImage, PackedBmp()}) {
        ASSERT_EQ(NumberFor(whole), 0);
        for (std::size_t at = 0; at < whole.size(); at += StepAt(at, whole)) {
            ASSERT_EQ(NumberFor(whole.substr(0, at)), InvalidPicture) << at << " of " << whole.size();
            for (const char damage : {'\0', '\xff', '\x80'}) {
                std::string damaged = whole;
                damaged[at] = damage;
                const int number = NumberFor(damaged);
                ASSERT_TRUE(number == 0 || number == InvalidPicture) << at;
            }
        }
        EXPECT_EQ(NumberFor(whole + "trailing"), 0);
    }
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST_F(PicturesTest, SizesBeyondTheLimitAreRefusedBeforeTheyTakeMemory) {
    const auto bmpOf = [](int width, int height, const std::string& pixels) {
        std::string content = "BM"s + std::string(8, '\0') + "\x36\0\0\0\x28\0\0\0"s;
        for (const int side : {width, height})
            for (int shift = 0; shift < 32; shift += 8) content += static_cast<char>(side >> shift & 255);
        return content + "\1\0\x18\0"s + std::string(24, '\0') + pixels;
    };
    const std::string line(3 * 8192, '\7');
    EXPECT_EQ(NumberFor(bmpOf(8192, 1, line)), 0);
    EXPECT_EQ(NumberFor(bmpOf(8192, -1, line)), 0) << "rows from the top";
    const std::pair<int, int> wrong[] = {{8193, 1}, {1, 8193}, {1, 65536},         {0, 1},
                                         {1, 0},    {-1, 1},   {INT_MAX, INT_MAX}, {1, INT_MIN}};
    for (const auto& [width, height] : wrong)
        EXPECT_EQ(NumberFor(bmpOf(width, height, line + line)), InvalidPicture) << width << ' ' << height;

    std::string gif = Gif;
    gif[7] = gif[9] = '\xff';
    EXPECT_EQ(NumberFor(gif), InvalidPicture);
}

TEST_F(PicturesTest, WhatIsNoPictureOfTheseKindsIsRefused) {
    for (const std::string& content :
         {""s, "BM"s, Saved(Quarters(), "png"), Saved(Quarters(), "xpm"),
          "<svg xmlns=\"http://www.w3.org/2000/svg\"/>"s, std::string(5000, '\xff'),
          "GIF89a"s + std::string(5000, '\xff'), "\xff\xd8\xff\xd9"s})
        EXPECT_EQ(NumberFor(content), InvalidPicture) << content.substr(0, 8);
    std::filesystem::create_directory(folder / "folder");
    for (const auto& [name, number] :
         {std::pair{"folder", PathAccess}, {"none", FileNotFound}, {"", PathAccess}})
        EXPECT_EQ(NumberRaisedBy([&] { pictures.Load(name); }), number) << name;
}

TEST_F(PicturesTest, WhatIsBuiltInIsThere) {
    const Bitmap polar = pictures.BuiltIn(BuiltInPicture::PolarBackground);
    ASSERT_EQ(std::pair(polar.width, polar.height), std::pair(557, 557));
    EXPECT_EQ(polar.pixels[0], Black);
    EXPECT_NE(polar.pixels[557 * 278 + 100], Black) << "the western axis";
    EXPECT_EQ(pictures.BuiltIn(BuiltInPicture::Splash).width, 480);
    EXPECT_EQ(QImage(QLatin1String(resources::Icon)).size(), QSize(256, 256));
    QFile changes{QLatin1String(resources::Changes)};
    EXPECT_TRUE(changes.open(QIODevice::ReadOnly) && changes.readAll().startsWith("# Changes"));
}

}  // namespace
}  // namespace veltrix
