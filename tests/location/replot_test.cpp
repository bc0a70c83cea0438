// The dots of the map made anew from the bearings behind them.

#include <gtest/gtest.h>

#include <algorithm>

#include "common/failure.h"
#include "location/replot.h"
#include "support/memory_files.h"
#include "support/plain_glyphs.h"
#include "support/recording_errors.h"

namespace veltrix {
namespace {

TEST(Replot, CrossesAgainWhatIsYoungEnoughWhileSamplesAreSkipped) {
    ManualClock clock;
    MemoryFiles files{clock};
    RecordingErrors errors;
    PreciseNow preciseNow{clock};
    PlainGlyphs glyphs;
    Mappers mappers{{clock, preciseNow, files, errors}};
    RecentData recent;
    LightningDots dots{clock};
    const Surface clean{557, 557, glyphs, {0, 0, 557, 557}};
    mappers.Local().MapRadius = 0;  // flat
    mappers.HomeX = mappers.HomeY = mappers[1].RemoteY = 100;
    mappers[1].RemoteX = 300;
    const auto add = [&](double dRemote, double minutes) {
        recent.Add({true, 45, 1, dRemote, clock.Now() - minutes / 1440});
    };
    add(120, 31);    // too old
    add(135, 5);     // at 200, 200
    recent.Add({});  // empty
    add(45, 1);      // nowhere
    add(179, 0.5);   // near 300, 300

    bool isSkipping = false;
    int drained = 0;
    std::function<void()> drain = [&] { drained += isSkipping ? 1 : 1000; };
    const auto replot = [&] {
        Surface map = clean;
        ReplotRecentData({mappers, recent, dots, clock, [&](bool skip) { isSkipping = skip; }, drain}, map,
                         {});
        dots.DrawAllLightningInPicture4(map, clean);
        return map;
    };
    const auto painted = [](const Surface& map) {
        return std::ranges::count_if(map.Image().pixels, [](ColourValue color) { return color != Black; });
    };
    const Surface before = replot();
    EXPECT_EQ(painted(before), 5) << "the pen and a dot";
    EXPECT_GT(before.Point(200, 357), Black);
    EXPECT_EQ(drained, 20);
    EXPECT_FALSE(isSkipping);

    mappers[1].dCorrectionAngle = -44;
    const Surface after = replot();
    EXPECT_EQ(painted(after), 6) << "and what was nowhere";
    EXPECT_EQ(after.Point(200, 357), Cyan) << "the newest has come here";

    drain = [] { throw Failure(veltrix::errors::Overflow, "Overflow", "Timer1_Timer"); };
    EXPECT_THROW(replot(), Failure);
    EXPECT_FALSE(isSkipping) << "the detector would be deaf for ever";
}

}  // namespace
}  // namespace veltrix
