#include "station/station_network.h"

#include <algorithm>

#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr std::int16_t OnlineEntriesKept = 50;

}  // namespace

StationNetwork::StationNetwork(FormControls& controls, Platform& platform, ErrorReporter& errors,
                               PreciseNow& preciseNow, const AmplitudeLimits& limits,
                               const std::function<HomeStation()>& home)
    : mappers({platform.clock, preciseNow, platform.files, errors}),
      sockets(platform.sockets),
      list({mappers, platform.clock, errors, controls.List("cmbRemoteHost"),
            controls.Check("optStationListUpdate")},
           platform.files),
      presence(list, sockets, platform.clock),
      online(platform.clock),
      ping({sockets, list, presence, online, receivers, platform.loop, platform.clock, errors,
            controls.Text("txtLastPing"), controls.Text("txtBadPing"), controls.List("lstOnline")}),
      link(sockets, preciseNow, errors),
      entries(online, sockets, list, home),
      server({sockets, list, presence, ping, receivers, platform.files, platform.clock, errors, home,
              controls.Check("optionHoldServer"), controls.Text("txtStateServer"),
              controls.List("CmbStateServer")}),
      reader({sockets, list, selection, receivers, link, limits, platform.clock, errors, home,
              controls.Check("OptionRemoteCWCCW"), controls.Check("OptionRemoteShow"),
              controls.Check("OptionRealTime"), controls.Text("txtDateRecv"),
              controls.Text("txtAlarmLatitude"), controls.Text("txtAlarmLongitude")}),
      client({sockets, selection, list, presence, online, reader, platform.store, platform.clock, errors,
              home, controls.Check("OptionHoldClient"), controls.Check("OptionScan"),
              controls.Text("txtStateClient"), controls.Text("txtClockDrift")}),
      sender({sockets, entries, ping, platform.loop, home, [this] { return client.HasData(); }}),
      store_(platform.store) {
    online.Init(OnlineEntriesKept);
    for (int row = 1; row <= C_NUMBEROFMAPPERS; ++row)
        mappers[row].Picture7 = &controls.Mark(ElementName("Picture7", row));
}

void StationNetwork::Start() {
    const double stored = ValNeutral(store_.GetSetting("Setting", "MapperIndex", "1"));
    selection.MapperIndex =
        static_cast<std::int16_t>(std::clamp(stored, 0.0, static_cast<double>(C_NUMBEROFMAPPERS)));
    SkippingErrors([&] { list.StationListGet(); }, [&] { list.StationListTo(); },
                   [&] { client.LoadClientSockets(); },
                   [&] { selection.ClientIndex = client.FindClientSocket(selection.MapperIndex); });
}

void StationNetwork::End() {
    SkippingErrors([&] { server.CloseAll(); }, [&] { client.SaveClientSockets(); },
                   [&] { sockets.sckLink->Close(); }, [&] { sockets.sckPing->Close(); });
}

}  // namespace veltrix
