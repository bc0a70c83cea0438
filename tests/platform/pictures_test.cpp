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
        ASSERT_EQ(bitmap.width, Width);
        ASSERT_EQ(bitmap.height, Height);
        for (const auto& [x, y, colour] : {std::tuple{0, 0, Rgb(200, 180, 90)},
                                           {Width - 1, 0, Rgb(30, 180, 90)},
                                           {0, Height - 1, Rgb(200, 20, 90)},
                                           {Width - 1, Height - 1, Rgb(30, 20, 90)}})
            for (int shift = 0; shift < 24; shift += 8)
                EXPECT_NEAR(bitmap.pixels[static_cast<std::size_t>(y * Width + x)] >> shift & 255,
                            colour >> shift & 255, tolerance)
                    << x << ' ' << y;
    }
    folder.Put("x.bmp", Gif);
    const ColourValue green = Rgb(0, 255, 0);
    EXPECT_EQ(pictures.Load("x.bmp"), (Bitmap{3, 2, {Red, green, Black, Black, green, Red}}))
        << "transparent is black";
    folder.Put("x.bmp", PackedBmp());
    EXPECT_EQ(pictures.Load("x.bmp"),
              (Bitmap{4, 2, {Black, White, White, Black, White, White, White, White}}));
}

TEST_F(PicturesTest, AFileCutAnywhereIsRefused) {
    const std::string gifToTheEndOfItsImage = Gif.substr(0, Gif.size() - 1);
    for (const std::string& whole :
         {Saved(Quarters(), "bmp"), Saved(Quarters(), "jpg"), gifToTheEndOfItsImage, PackedBmp()}) {
        ASSERT_EQ(NumberFor(whole), 0);
        for (std::size_t length = 0; length < whole.size(); length += StepAt(length, whole))
            ASSERT_EQ(NumberFor(whole.substr(0, length)), InvalidPicture) << length << " of " << whole.size();
        EXPECT_EQ(NumberFor(whole + "trailing"), 0);
    }
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
    for (const auto& [width, height] : {std::pair{8193, 1},
                                        {1, 8193},
                                        {1, 65536},
                                        {0, 1},
                                        {1, 0},
                                        {-1, 1},
                                        {0x7fffffff, 0x7fffffff},
                                        {1, INT_MIN}})
        EXPECT_EQ(NumberFor(bmpOf(width, height, line + line)), InvalidPicture) << width << ' ' << height;

    std::string gif = Gif;
    gif[7] = gif[9] = '\xff';
    EXPECT_EQ(NumberFor(gif), InvalidPicture);
    std::string jpg = Saved(Quarters(), "jpg");
    const std::size_t frame = jpg.find("\xff\xc0\0\x11\x8"s);
    ASSERT_NE(frame, std::string::npos);
    jpg[frame + 5] = '\x7f';
    EXPECT_EQ(NumberFor(jpg), InvalidPicture);
}

TEST_F(PicturesTest, WhatIsNoPictureOfTheseKindsIsRefused) {
    for (const std::string& content :
         {""s, "BM"s, Saved(Quarters(), "png"), Saved(Quarters(), "xpm"),
          "<svg xmlns=\"http://www.w3.org/2000/svg\"/>"s, std::string(5000, '\xff'),
          "GIF89a"s + std::string(5000, '\xff'), "\xff\xd8\xff\xd9"s})
        EXPECT_EQ(NumberFor(content), InvalidPicture) << content.substr(0, 8);
    std::filesystem::create_directory(folder / "folder");
    EXPECT_EQ(NumberRaisedBy([&] { pictures.Load("folder"); }), PathAccess);
    EXPECT_EQ(NumberRaisedBy([&] { pictures.Load("none.bmp"); }), FileNotFound);
    EXPECT_EQ(NumberRaisedBy([&] { pictures.Load(""); }), PathAccess);
}

TEST_F(PicturesTest, DamageInsideNeitherCrashesNorTalks) {
    ::testing::internal::CaptureStderr();
    for (const std::string& whole : {Saved(Quarters(), "bmp"), Saved(Quarters(), "jpg"), Gif, PackedBmp()})
        for (std::size_t at = 0; at < whole.size(); at += StepAt(at, whole))
            for (const char damage : {'\0', '\xff', '\x80'}) {
                std::string damaged = whole;
                damaged[at] = damage;
                const int number = NumberFor(damaged);
                ASSERT_TRUE(number == 0 || number == InvalidPicture) << at;
            }
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST_F(PicturesTest, ThePolarBackgroundLetsDotsStandOut) {
    const Bitmap polar = pictures.BuiltIn(BuiltInPicture::PolarBackground);
    ASSERT_EQ(polar.width, 557);
    ASSERT_EQ(polar.height, 557);
    for (int y = 0; y < 557; ++y)
        for (int x = 0; x < 557; ++x) {
            const ColourValue pixel = polar.pixels[static_cast<std::size_t>(557 * y + x)];
            for (int shift = 0; shift < 24; shift += 8) ASSERT_LE(pixel >> shift & 255, 130) << x << ' ' << y;
            const bool isOutside = (x - 278) * (x - 278) + (y - 278) * (y - 278) > 276 * 276;
            ASSERT_TRUE(!isOutside || pixel == Black) << x << ' ' << y;
        }
    EXPECT_NE(polar.pixels[557 * 278 + 100], Black) << "the western axis";
    EXPECT_EQ(pictures.BuiltIn(BuiltInPicture::Splash).width, 480);
    EXPECT_EQ(QImage(QLatin1String(resources::Icon)).size(), QSize(256, 256));
    QFile changes{QLatin1String(resources::Changes)};
    EXPECT_TRUE(changes.open(QIODevice::ReadOnly) && changes.readAll().startsWith("# Changes"));
}

}  // namespace
}  // namespace veltrix
