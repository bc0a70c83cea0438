#include "display/captions.h"

#include <algorithm>
#include <string>

#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr ColourValue BlockColour = Rgb(128, 0, 0);
constexpr int LastRow = 12;  // of the block, and of the strip to its right
constexpr double BlockRight = 110;
constexpr double StripLeft = 115;
constexpr double LegendTop = 30;
constexpr double LegendText = 14;  // left end of its texts

/// Moves the text position without painting.
void MoveText(Surface& surface, double x, double y) {
    surface.PSet(x, y, surface.Point(x, y));
}

/// The colours of a dot from new to its end, in steps. Those of the bar are not quite those of the dots.
class LegendColour {
  public:
    static constexpr int Steps = 81;

    ColourValue Value() const { return Rgb(red_, green_, blue_); }
    void Step() {
        constexpr int LeastRed = 128;
        if (blue_ > 0)
            Darken(blue_);
        else if (green_ > 0)
            Darken(green_);
        else if (red_ > LeastRed)
            Darken(red_);
    }

  private:
    static void Darken(int& channel) { channel = std::max(channel - 8, 0); }

    int red_ = 255;
    int green_ = 255;
    int blue_ = 255;
};

void DrawLegend(Surface& surface, std::int32_t age) {
    MoveText(surface, LegendText, LegendTop);
    surface.Print(" 0 Min.");
    LegendColour colour;
    double y = LegendTop;
    for (int step = 0; step < LegendColour::Steps; ++step) {
        surface.Line(3, y, 13, y, colour.Value());
        colour.Step();
        ++y;
    }
    MoveText(surface, LegendText, y - 12);
    surface.Print(" " + std::to_string(age) + " Min.");
}

void DrawAnnouncement(Surface& surface, const Surface& background, const std::string& text) {
    for (int y = LastRow; y >= 0; --y)
        for (double x = StripLeft; x <= surface.ScaleWidth(); ++x) surface.PSet(x, y, background.Point(x, y));
    MoveText(surface, StripLeft, 0);
    surface.Print(text);
}

}  // namespace

void DrawCaption(Surface& surface, const CaptionFacts& facts) {
    for (int y = LastRow; y >= 0; --y) surface.Line(BlockRight, y, 0, y, BlockColour);
    surface.PSet(0, 0, BlockColour);
    surface.Print(FormatDate(facts.now, " DD/MM/YYYY HH:MM:SS"));
    surface.PSet(0, LastRow + 1, BlockColour);
    surface.Print(" V " + facts.sVersion + " " + facts.sLocalIP);
}

void DrawMapCaption(Surface& surface, const Surface& background, const CaptionFacts& facts,
                    const MapFacts& map) {
    DrawCaption(surface, facts);
    DrawLegend(surface, map.Age);
    DrawAnnouncement(surface, background, map.sAnnouncement);
}

void DrawDateCaption(Surface& surface, DateTime now) {
    constexpr double Hours = 3;
    constexpr double RowsADegree = 4;  // finer than the pixels, so that none is left out
    for (int k = LastRow; k >= 0; --k) surface.Line(Hours, k / RowsADegree, 0, k / RowsADegree, BlockColour);
    surface.PSet(0, 0, BlockColour);
    surface.ForeColor = White;
    surface.Print(FormatDate(now, " DD/MM/YYYY"));
}

}  // namespace veltrix
