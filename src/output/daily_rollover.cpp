#include "output/daily_rollover.h"

#include "common/neutral_text.h"
#include "display/bitmap_file.h"

namespace veltrix {

void DailyRollover::Timer5_Timer() {
    const auto hasEnded = [this] { return strPrevDate != strDate; };
    UnderErrorConvention(
        errors_, "Timer5_Timer", [&] { strDate = FormatDate(platform_.clock.Now(), "YYYY-MM-DD"); },
        [&] {
            if (strPrevDate.empty())
                strPrevDate = platform_.store.GetSetting("Setting", "strPrevDate", strDate);
        },
        [&] {
            if (hasEnded()) SaveBitmap(platform_.files, "picture5yesterday.bmp", plot_.Image());
        },
        [&] {
            if (hasEnded()) plot_.SetPicture({});
        },
        [&] {
            if (hasEnded() && platform_.files.Exists("picture5m.bmp"))
                plot_.SetPicture(platform_.pictures.Load("picture5m.bmp"));
        },
        [&] { strPrevDate = strDate; },
        [&] { platform_.store.SaveSetting("Setting", "strPrevDate", strPrevDate); });
}

}  // namespace veltrix
