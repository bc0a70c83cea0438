#include "location/map_update.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "common/arithmetic.h"
#include "location/correlation_log.h"

namespace veltrix {

namespace {

constexpr double PoorFit = 10.0;  // percent
constexpr double LightKmPerMs = 299.792458;
constexpr double FarthestFromMedian = 0.25;  // ms that the clocks may seem to differ from their median
constexpr double ToaBin = 0.05;              // ms
constexpr double ToaMiddle = 0.5;            // of the display, where a difference of 0 stands
constexpr double ToaGain = 32;

/// The bearing that a slope on the map stands for, 0 to 180: a bearing and its opposite are one line.
double BearingOf(double slope) {
    return 90 - std::atan(slope) * 180 / std::numbers::pi;
}

}  // namespace

StrikeFix StrikeLocator::MapUpdate(std::int16_t row, int socket, const OfferedDetection& detection,
                                   double dFitError) {
    Offer offer{row, socket, parts_.mappers[row], parts_.rules(), {}, {}, {}};
    const auto whenPaired = [&](auto step) {
        return [&offer, step] {
            if (offer.figures.bOk) step();
        };
    };
    UnderErrorConvention(
        parts_.errors, "MapUpdate", [&] { Match(offer, detection, dFitError); },
        whenPaired([&] { Cross(offer); }), whenPaired([&] { TimeOfArrival(offer); }),
        whenPaired([&] { TestStrength(offer); }), whenPaired([&] { SkippingErrors([&] { Log(offer); }); }),
        whenPaired([&] { Plot(offer); }),
        [&] { offer.mapper.Corr.cHistogram().DisplaySync(parts_.display.PicSync(socket)); },
        [&] { Show(offer); });
    offer.result.bLocated = offer.figures.bOk && !offer.result.bDoNotPlot;
    if (offer.result.bLocated && OnLocated) OnLocated(offer.result, row);
    return offer.result;
}

void StrikeLocator::Match(Offer& offer, const OfferedDetection& detection, double dFitError) {
    const Correlation found = offer.mapper.Corr.Correlator(detection, offer.rules.RTClock);
    offer.figures.dDiffTime = found.dOutDiffTime;
    offer.figures.lmY = found.lmY;
    // A poor fit gives no position, but the detection stays in the correlator.
    offer.figures.bOk = found.bMatched && dFitError < PoorFit;
}

void StrikeLocator::Cross(Offer& offer) {
    Mappers& mappers = parts_.mappers;
    const ClassCorrelator::Held& local = offer.mapper.Corr.MatchedLocal();
    const ClassCorrelator::Held& remote = offer.mapper.Corr.MatchedRemote();
    offer.result.lLocalTime = RoundToLong(local.dTime);
    // Until a place is found there is none to plot.
    offer.result.bDoNotPlot = true;
    const RawBearings raw{offer.row, BearingOf(local.dA), BearingOf(remote.dA)};
    offer.fix = CorrectBearings(mappers, raw, offer.rules.dLocalCorrectionAngle);
    dDirLocal_ = offer.fix.dDirLocal;
    dDirRemote_ = offer.fix.dDirRemote;
    if (mappers.Local().HasGeometry()) {
        CrossOnGlobe(offer.fix, mappers, offer.row, offer.rules.home, offer.rules.dAngularSeparation);
        offer.mapper.dDistanceToLocal = offer.fix.dDistanceToLocal;
        offer.mapper.dDistanceToRemote = offer.fix.dDistanceToRemote;
    } else {
        CrossOnFlatMap(offer.fix, {{local.dX, local.dY}, {remote.dX, remote.dY}});
    }
    offer.result.LongitudeLightning = offer.fix.LongitudeLightning;
    offer.result.LatitudeLightning = offer.fix.LatitudeLightning;
    // Bearings that cross too flat give no position.
    offer.result.bDoNotPlot = !offer.fix.bWide;
    // As measured: the calibration is to be able to change them later.
    parts_.recent.Add({true, raw.dDirLocal, offer.row, raw.dDirRemote, parts_.clock.Now()});
    offer.bRingEntry = true;
}

/// What the difference of the clocks would be if the position is right tells whether it is.
void StrikeLocator::TimeOfArrival(Offer& offer) {
    if (!parts_.mappers.Local().HasGeometry()) return;
    ClassMapper& mapper = offer.mapper;
    ClassCorrelator& Corr = mapper.Corr;
    mapper.dTravelTime = (mapper.dDistanceToRemote - mapper.dDistanceToLocal) / LightKmPerMs;
    const double dToa = offer.figures.dDiffTime + mapper.dTravelTime;
    mapper.dThisTOADiffTime = dToa;
    Corr.TOAMedian.Update2(dToa, parts_.preciseNow.Now());
    mapper.dTOADiffTime = Corr.TOAMedian.Median2().dMedian;
    if (Corr.EstimateClockDrift(dToa, parts_.preciseNow.Now(), offer.rules.bClockDriftCompensation) &&
        IsSelected(offer))
        parts_.display.ShowDrift(mapper);
    if (offer.result.bDoNotPlot || !offer.rules.bTOAFilter) return;
    if (std::abs(dToa - mapper.dTOADiffTime) > FarthestFromMedian) {
        offer.result.bDoNotPlot = true;
        offer.bRejected = true;
    }
    Surface& PicSync = parts_.display.PicSync(offer.socket);
    ClassHistogram& fine = Corr.cFineHistogram();
    ClassHistogram& coarse = Corr.cCoarseHistogram();
    fine.Update(dToa, ToaBin, ToaMiddle);
    coarse.Update(offer.figures.dDiffTime, ToaBin, ToaMiddle);
    coarse.DisplaySync2(PicSync, Red, ToaGain, false);
    fine.DisplaySync2(PicSync, Green, ToaGain, true);
    coarse.lRowX = fine.lRowX;
}

void StrikeLocator::TestStrength(Offer& offer) {
    const ClassCorrelator& Corr = offer.mapper.Corr;
    const double weakest = -static_cast<double>(offer.rules.iMinStrength);
    const bool bWeak = Corr.MatchedLocal().dAmp < weakest || Corr.MatchedRemote().dAmp < weakest;
    if (bWeak) offer.bRejected = true;
    if (offer.bRejected && offer.bRingEntry) parts_.recent.TakeBack();
    offer.mapper.dFixX = offer.fix.place.dX;
    offer.mapper.dFixY = offer.fix.place.dY;
    offer.result.bDoNotPlot = offer.result.bDoNotPlot || bWeak || !OnMap(offer.fix.place);
}

void StrikeLocator::Log(const Offer& offer) const {
    if (!offer.rules.bLog) return;
    const ClassMapper& mapper = offer.mapper;
    LogPair(parts_.files, parts_.clock, mapper.sLocalName,
            {offer.fix.dDirLocal, offer.fix.dDirRemote, offer.figures.dDiffTime, mapper.Corr.lmY,
             mapper.dTravelTime, mapper.Corr.MatchedLocal().dTime, mapper.Corr.MatchedRemote().dTime});
}

void StrikeLocator::Plot(Offer& offer) {
    ClassMapper& mapper = offer.mapper;
    const DateTime made = parts_.recent.Head().dRecentTime;
    if (offer.result.bDoNotPlot || !IsPlaced({mapper.dFixX, mapper.dFixY}) ||
        !(AgeInMinutes(made, parts_.clock.Now()) < offer.rules.Age))
        return;
    const ClassCorrelator::Held& local = mapper.Corr.MatchedLocal();
    const ClassCorrelator::Held& remote = mapper.Corr.MatchedRemote();
    // Without focus it is fed all the same, so that it is ready when the user wants it.
    const MapPoint focus =
        parts_.mappers.c2DFocus.GetFocus(local.dX, local.dY, remote.dX, remote.dY,
                                         {mapper.dFixX, mapper.dFixY}, offer.rules.FocusWindow, made);
    if (offer.rules.bFocus) {
        mapper.dFixX = focus.dX;
        mapper.dFixY = focus.dY;
    }
    // The map grows northwards, the surface downwards.
    mapper.dFixY = parts_.Picture4.ScaleHeight() - mapper.dFixY;
    offer.result.bDoNotPlot = !OnMap({mapper.dFixX, mapper.dFixY});
    if (offer.result.bDoNotPlot) return;
    parts_.dots.MapUpdatePlot(parts_.Picture4, parts_.Picture8, mapper.dFixX, mapper.dFixY, true);
    mapper.lCorrelatedPlottedCount = NextCount(mapper.lCorrelatedPlottedCount);
}

void StrikeLocator::Show(Offer& offer) {
    if (!IsSelected(offer)) return;
    offer.figures.bDoNotPlot = offer.result.bDoNotPlot;
    offer.figures.dDirLocal = dDirLocal_;
    offer.figures.dDirRemote = dDirRemote_;
    parts_.display.Show(offer.socket, offer.mapper, offer.figures);
}

}  // namespace veltrix
