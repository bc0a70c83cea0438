// What a server sends: a greeting and detections, in reads that a form feed ends. The first byte sets the
// options.

#include <cmath>

#include "network_station.h"
#include "station/form_displays.h"

using namespace veltrix;

namespace {

struct Matching final : RemoteMatching {
    StrikeFix MapUpdate(const RemoteDetection& d) override {
        MustHold(0 <= d.row && d.row <= C_NUMBEROFMAPPERS && d.socket == 0);
        MustHold(std::abs(d.dDir) <= 1e6 + 180 && std::abs(d.dAmp) <= 1e6 && std::isfinite(d.dTime));
        return {true, d.dDir, d.dAmp, false};
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view input = InputText(data + 1, size - 1);
    NetworkStation station;
    static RecordingErrors errors;
    static FormDisplays displays(station.controls, errors);
    Matching matching;
    station.network.receivers.displays = &displays;
    station.network.receivers.matching = &matching;
    int bit = 1;
    for (const char* const option : {"OptionRemoteCWCCW", "OptionRemoteShow", "OptionRealTime"}) {
        station.controls.Check(option).SetValue((data[0] & bit) != 0 ? 1 : 0);
        bit *= 2;
    }
    station.network.link.Upkeep();
    const auto display = station.computer.network.At("10.0.0.3").MakeSocket();
    display->Connect("10.0.0.1", LinkPort);
    station.ServeAtAlpha();
    station.network.client.Upkeep();
    station.computer.loop.Run(10);
    station.Say(ReadsOf(input));
    MustHold(station.peer->State() == SocketState::Connected && errors.reports.empty());
    station.network.client.Minute();
    station.network.entries.SendOnlineEntry();
    station.Check(input);
    return 0;
}
