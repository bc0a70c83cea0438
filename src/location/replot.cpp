#include "location/replot.h"

#include "display/colours.h"
#include "location/bearing_fix.h"

namespace veltrix {

namespace {

constexpr int RecordsBetweenDrains = 100;

/// Holds the detector off while it lives.
class SamplesSkipped {
  public:
    explicit SamplesSkipped(const std::function<void(bool)>& skip) : skip_(skip) { skip_(true); }
    ~SamplesSkipped() { skip_(false); }
    SamplesSkipped(const SamplesSkipped&) = delete;
    SamplesSkipped& operator=(const SamplesSkipped&) = delete;

  private:
    const std::function<void(bool)>& skip_;
};

void ReplotOne(const ReplotParts& parts, const Surface& pic, const FixRules& rules, const RecentFix& record,
               DateTime now) {
    Mappers& mappers = parts.mappers;
    const ClassMapper& remote = mappers[record.iRecentMapper];
    BearingFix fix =
        CorrectBearings(mappers, {record.iRecentMapper, record.dRecentDirLocal, record.dRecentDirRemote},
                        mappers.Local().dCorrectionAngle);
    if (mappers.Local().MapRadius != 0)
        CrossOnGlobe(fix, mappers, record.iRecentMapper, rules.home, rules.dAngularSeparation);
    else
        CrossOnFlatMap(fix, {{mappers.HomeX, mappers.HomeY}, {remote.RemoteX, remote.RemoteY}});
    if (!(AgeInMinutes(record.dRecentTime, now) < rules.Age) || !IsPlaced(fix.place) || !fix.bWide) return;
    const MapPoint focus =
        mappers.c2DFocus.GetFocus(mappers.HomeX, mappers.HomeY, remote.RemoteX, remote.RemoteY, fix.place,
                                  rules.FocusWindow, record.dRecentTime);
    const MapPoint place = rules.bFocus ? focus : fix.place;
    parts.dots.AddpXY2(pic, place.dX, pic.ScaleHeight() - place.dY,
                       AgeColor(now - record.dRecentTime, rules.Age), record.dRecentTime);
}

}  // namespace

void ReplotRecentData(const ReplotParts& parts, const Surface& pic, const FixRules& rules) {
    const SamplesSkipped skipped(parts.skipSamples);
    parts.dots.ClearpX2();
    parts.mappers.c2DFocus.Clear();
    DateTime now = 0;
    for (int k = 0; k < RecentData::Length; ++k) {
        if (k % RecordsBetweenDrains == 0) {
            parts.Timer1_Timer();
            // The records up to the next drain take less time than the clock's step; reading it takes as much
            // as crossing the bearings.
            now = parts.clock.Now();
        }
        const RecentFix& record = parts.recent.Slot((parts.recent.iRecentHead + k + 1) % RecentData::Length);
        if (record.bRecentValid) ReplotOne(parts, pic, rules, record, now);
    }
}

}  // namespace veltrix
