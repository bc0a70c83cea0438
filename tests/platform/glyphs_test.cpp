// Text as pixels, with the font that is built in.

#include <gtest/gtest.h>

#include <QGuiApplication>

#include "platform/qt/qt_glyphs.h"

namespace veltrix {
namespace {

struct GlyphsTest : ::testing::Test {
    static void SetUpTestSuite() { qputenv("QT_QPA_PLATFORM", "offscreen"); }

    int count = 1;
    char name[5] = "test";
    char* arguments[2] = {name, nullptr};
    QGuiApplication application{count, arguments};
    QtGlyphs glyphs;

    /// The rows of a text, "#" where it is set.
    std::string Drawn(std::string_view text) {
        const GlyphMask mask = glyphs.Render(text);
        std::string rows;
        for (int y = 0; y < mask.height; ++y) {
            for (int x = 0; x < mask.width; ++x) rows += mask.IsSet(x, y) ? '#' : '.';
            rows += '\n';
        }
        return rows;
    }
};

TEST_F(GlyphsTest, ThePixelsAreTheSameOnEveryComputer) {
    EXPECT_EQ(Drawn("-5\xC2\xB0g"),
              ".....................\n"
              ".....................\n"
              ".....................\n"
              ".....####..###.......\n"
              ".....#.....#.#.......\n"
              ".....####..###...####\n"
              ".........#......#...#\n"
              ".###.....#......#...#\n"
              ".........#......#...#\n"
              ".....####........####\n"
              "....................#\n"
              ".................###.\n"
              ".....................\n");
}

TEST_F(GlyphsTest, EveryTextIsOfOneHeightAndAsWideAsItsCharacters) {
    const std::string_view broken("\xff\xc3", 2);
    for (const auto& [text, alike] : {std::pair<std::string_view, std::string_view>{"\r\n", ""},
                                      {"a\nb\r", "ab"},
                                      {"12:34", "09:87"},
                                      {"\xF0\x9F\x8C\xA9", "\xE4\xB8\xAD"},
                                      {broken, "\xEF\xBF\xBD\xEF\xBF\xBD"}}) {
        const GlyphMask mask = glyphs.Render(text);
        EXPECT_EQ(mask.height, QtGlyphs::Height) << text;
        EXPECT_EQ(mask.width, glyphs.Render(alike).width) << text;
        EXPECT_EQ(mask.set.size(), static_cast<std::size_t>(mask.width * mask.height)) << text;
    }
    EXPECT_GT(glyphs.Render("W").width, glyphs.Render("i").width);
    EXPECT_LE(glyphs.Render(" 28/08/2026 20:48:56").width, 110) << "the block of the caption";
    EXPECT_EQ(Drawn("\xF0\x9F\x8C\xA9"), Drawn("\xE4\xB8\xAD")) << "what the font lacks is a box";
    EXPECT_NE(Drawn("\xE4\xB8\xAD").find('#'), std::string::npos);
}

TEST_F(GlyphsTest, ALongTextIsCutToWholeCharacters) {
    const int one = glyphs.Render("x").width;
    EXPECT_EQ(glyphs.Render(std::string(1000000, 'x')).width, QtGlyphs::MostWidth / one * one);
    std::string wide;
    for (int i = 0; i < 1000; ++i) wide += "\xF0\x9F\x8C\xA9";
    EXPECT_LE(glyphs.Render(wide).width, QtGlyphs::MostWidth);
}

}  // namespace
}  // namespace veltrix
