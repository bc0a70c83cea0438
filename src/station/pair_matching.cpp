#include "station/pair_matching.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "common/arithmetic.h"
#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr double RealTimeDivisor = 10;

}  // namespace

std::string FixLine(const LocatedStrike& strike) {
    // A name comes from the network, and the line goes to a terminal.
    std::string name = strike.sRemoteName;
    std::ranges::replace_if(
        name, [](char c) { return std::iscntrl(static_cast<unsigned char>(c)) != 0; }, ' ');
    return "fix " + GeneralDate(strike.dDate) + ", " + FormatNeutral(strike.LatitudeLightning, LatitudeMask) +
           ", " + FormatNeutral(strike.LongitudeLightning, LongitudeMask) + ", " +
           std::to_string(strike.lLocalTime) + ", " + name;
}

PairMatching::PairMatching(FormControls& controls, StationNetwork& network, StrikeLocator& locator,
                           Clock& clock, std::function<HomeStation()> home)
    : network_(network),
      locator_(locator),
      clock_(clock),
      home_(std::move(home)),
      OptionScan(controls.Check("OptionScan")) {
    for (int i = 0; i < ClientSockets; ++i)
        txtDiffTime[static_cast<std::size_t>(i)] = &controls.Text(ElementName("txtDiffTime", i));
    locator_.OnLocated = [this](const StrikeFix& fix, std::int16_t row) { Tell(fix, row); };
}

bool PairMatching::MapUpdateAll(Pulse& pulse, bool bRealTime, Located& located, FailureHandler& failures) {
    for (int i = 0; i < ClientSockets; ++i) {
        if (network_.sockets.sckClient[static_cast<std::size_t>(i)]->Tag.empty()) continue;
        bool bDoNotPlot = false;
        const bool bGoesOn = RunSteps(
            failures,
            [&] {
                // The division acts on what the next station gets, too.
                if (bRealTime) pulse.dStopwatchTime /= RealTimeDivisor;
            },
            [&] { MapUpdateOne(i, pulse, bRealTime, located, bDoNotPlot); }, [&] { ShowCorrelator(i); },
            [&] {
                const bool bSelected = &MapperOf(i) == &network_.Selected();
                if (located.bLocated && bSelected &&
                    MapperOf(i).Corr.Median.VarianceMean() < ClassCorrelator::WidestVariance)
                    OptionScan.SetValue(0);
            },
            [&] {
                const HomeStation home = home_();
                network_.link.UpdateLink(home.HomeLongitude, home.HomeLatitude, located.LongitudeLightning,
                                         located.LatitudeLightning, bDoNotPlot);
            });
        if (!bGoesOn) return false;
    }
    return true;
}

void PairMatching::MapUpdateOne(int socket, const Pulse& pulse, bool bRealTime, Located& located,
                                bool& bDoNotPlot) {
    const std::int16_t row = RowOfTag(network_.sockets.sckClient[static_cast<std::size_t>(socket)]->Tag);
    const Mappers& mappers = network_.mappers;
    const StrikeFix fix = locator_.MapUpdate(row, socket,
                                             {true, mappers.HomeX, mappers.HomeY, pulse.dDir, pulse.dAmp,
                                              bRealTime ? pulse.dStopwatchTime : pulse.dLocalSample},
                                             pulse.dFitError);
    Count(fix);
    located = {fix.bLocated, fix.LatitudeLightning, fix.LongitudeLightning};
    bDoNotPlot = fix.bDoNotPlot;
}

void PairMatching::ShowCorrelator(int socket) {
    ClassCorrelator& Corr = MapperOf(socket).Corr;
    txtDiffTime[static_cast<std::size_t>(socket)]->SetText(
        GeneralNumber(IntegerPart(Corr.lmY)) + " D " + GeneralNumber(IntegerPart(Corr.dPreDrift)) + " V " +
        FormatNeutral(Corr.Median.VarianceMean(), "0.0"));
}

ClassMapper& PairMatching::MapperOf(int socket) {
    return network_.mappers[RowOfTag(network_.sockets.sckClient[static_cast<std::size_t>(socket)]->Tag)];
}

StrikeFix PairMatching::MapUpdate(const RemoteDetection& detection) {
    const ClassMapper& row = network_.mappers[detection.row];
    const StrikeFix fix = locator_.MapUpdate(
        detection.row, detection.socket,
        {false, row.RemoteX, row.RemoteY, detection.dDir, detection.dAmp, detection.dTime}, 0);
    Count(fix);
    return fix;
}

void PairMatching::Count(const StrikeFix& fix) {
    if (fix.bLocated || fix.bDoNotPlot) pairCount.Count();
    if (fix.bLocated) locatedCount.Count();
}

void PairMatching::Tell(const StrikeFix& fix, std::int16_t row) {
    if (!OnLocated) return;
    const double longitude = fix.LongitudeLightning;
    OnLocated({clock_.Now(), fix.LatitudeLightning, longitude >= 180 ? longitude - 360 : longitude,
               fix.lLocalTime, network_.mappers[row].sRemoteName});
}

}  // namespace veltrix
