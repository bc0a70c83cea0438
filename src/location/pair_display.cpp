#include "location/pair_display.h"

#include <string>

#include "common/arithmetic.h"
#include "common/colour.h"
#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr std::string_view BearingMask = "000.0";
constexpr std::string_view MillisecondMask = "0.00 mS";

std::string Whole(double value) {
    return GeneralNumber(IntegerPart(value));
}

}  // namespace

void PairDisplay::Show(int socket, const ClassMapper& mapper, const PairFigures& figures) {
    SyncPanel& panel = Panel(socket);
    const std::string difference =
        Whole(figures.dDiffTime) + " @ " + GeneralNumber(RoundTiesToEven(figures.dDiffTime - figures.lmY));
    panel.lblRemoteSampleCount.SetCaption(difference + " # R" +
                                          std::to_string(mapper.Corr.lRemoteSampleCount) + ":L" +
                                          std::to_string(mapper.Corr.lLocalSampleCount));
    if (figures.bOk) {
        panel.lblRemoteSampleCountCorrelated.SetCaption(difference + " # " +
                                                        std::to_string(mapper.Corr.lCorrelatedCount));
        panel.lblRemoteSampleCount.SetForeColor(figures.bDoNotPlot ? Yellow : Green);
    } else {
        panel.lblRemoteSampleCount.SetForeColor(Red);
    }
    parts_.txtLocal.SetText(FormatNeutral(figures.dDirLocal, BearingMask));
    parts_.txtRemote.SetText(FormatNeutral(figures.dDirRemote, BearingMask));
    panel.lblPrevAvgDiffTime.SetCaption(FormatNeutral(mapper.dTravelTime, MillisecondMask));
    parts_.lblStrikeCount4.SetCaption(std::to_string(mapper.lCorrelatedPlottedCount));
    panel.lblAvgDiffTime.SetCaption(
        Whole(mapper.dTOADiffTime) + "  " +
        FormatNeutral(mapper.dThisTOADiffTime - mapper.dTOADiffTime, MillisecondMask));
}

void PairDisplay::ShowDrift(const ClassMapper& mapper) {
    parts_.txtClockDrift.SetText(Whole(mapper.Corr.dPreDrift));
}

}  // namespace veltrix
