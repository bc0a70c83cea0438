#pragma once
// The station's part in the network, put together.

#include <functional>

#include "network/client_side.h"
#include "network/detection_sender.h"
#include "network/server_side.h"
#include "platform/platform.h"
#include "station/form_controls.h"

namespace veltrix {

/// Owns the sockets, the rows of the station list and all who work with them; the members are made in the
/// order in which they use each other. Owned by the form.
struct StationNetwork {
    /// `home` tells what the station says of itself; `limits` are those of the polar display.
    StationNetwork(FormControls& controls, Platform& platform, ErrorReporter& errors, PreciseNow& preciseNow,
                   const AmplitudeLimits& limits, const std::function<HomeStation()>& home);

    /// Reads the station list and ties the client sockets. REQUIRES that the settings are loaded.
    void Start();
    /// Saves the ties of the client sockets, and closes all sockets.
    void End();

    /// The row of the selected station.
    ClassMapper& Selected() { return mappers[selection.MapperIndex]; }

    Mappers mappers;
    StationSockets sockets;
    Selection selection;
    NetworkReceivers receivers;
    StationList list;
    Presence presence;
    ClassOnline online;
    Ping ping;
    LinkStream link;
    OnlineEntries entries;
    ServerSide server;
    ClientReader reader;
    ClientSide client;
    DetectionSender sender;

  private:
    SettingsStore& store_;
};

}  // namespace veltrix
