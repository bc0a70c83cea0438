#include "display/colours.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <tuple>

namespace veltrix {
namespace {

TEST(Colours, AmplitudesRunFromDarkRedToPaleBlue) {
    const std::tuple<std::size_t, int, int, int> rows[] = {
        {0, 128, 8, 0},       {31, 251, 51, 0},     {64, 255, 129, 1},   {127, 255, 239, 20},
        {192, 255, 255, 196}, {224, 193, 193, 255}, {255, 157, 157, 255}};
    const AmpColorTable table = BuildAmpColorTable();
    for (const auto& [v, red, green, blue] : rows)
        EXPECT_EQ(Rgb(table.AmpRed[v], table.AmpGreen[v], table.AmpBlue[v]), Rgb(red, green, blue)) << v;
    for (std::size_t v = 0; v < 256; ++v) {
        const double brightest = std::max({table.AmpRed[v], table.AmpGreen[v], table.AmpBlue[v]});
        EXPECT_NEAR(brightest, v < 32 ? 255 * (32.0 + static_cast<double>(v)) / 64 : 255, 0.5) << v;
    }
}

TEST(Colours, DotsFadeOneMinuteAfterTheSetAge) {
    const std::tuple<double, int, ColourValue> dots[] = {{0, 59, White},
                                                         {-1e9, 59, White},
                                                         {20.001, 59, Rgb(255, 255, 0)},
                                                         {30, 59, Rgb(255, 127, 0)},
                                                         {40.001, 59, Rgb(255, 0, 0)},
                                                         {59, -59, Rgb(12, 0, 0)},
                                                         {60.001, 59, Black},
                                                         {0.5, 0, Rgb(255, 127, 0)},
                                                         {1.001, 0, Black}};
    for (const auto& [minutes, age, colour] : dots)
        EXPECT_EQ(AgeColor(minutes / 1440, age), colour) << minutes << " of " << age;
}

TEST(Colours, ChannelsOfAColourValue) {
    for (const auto& [colour, red, green, blue] :
         {std::array{Rgb(1, 128, 254), 1, 128, 254}, {-2147483648 + 15, 15, 0, 255}, {-1, 255, 255, 255}})
        EXPECT_EQ((std::array{RedOf(colour), GreenOf(colour), BlueOf(colour)}),
                  (std::array{red, green, blue}));
}

}  // namespace
}  // namespace veltrix
