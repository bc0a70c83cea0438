#pragma once
// The network part of a station in memory, built anew for each input, and a peer that says what the input
// says.

#include <algorithm>
#include <string>
#include <vector>

#include "common/letter_case.h"
#include "fuzz_input.h"
#include "network/wire_text.h"
#include "station/station_network.h"
#include "support/recording_errors.h"
#include "support/test_platform.h"

namespace veltrix {

/// A form feed ends one read of an input and begins the next.
inline std::vector<std::string> ReadsOf(std::string_view input) {
    std::vector<std::string> reads;
    while (!input.empty()) {
        const std::size_t end = std::min(input.find('\f'), input.size());
        reads.emplace_back(input.substr(0, end));
        input.remove_prefix(std::min(end + 1, input.size()));
    }
    return reads;
}

/// The controls are made once for all inputs; what they show from an earlier input is never read.
inline FormControls& SharedControls() {
    static PlainGlyphs glyphs;
    static FormControls controls(glyphs);
    return controls;
}

/// The station is "Home" at 10.0.0.1; 10.0.0.9 is row 2, "Alpha", and nobody is at the place of row 4.
struct NetworkStation {
    NetworkStation() {
        controls.Check("optStationListUpdate").SetValue(1);
        computer.store.SaveSetting("ClientSocket", "Tag0", "2");
        computer.store.SaveSetting("ClientSocket", "Tag1", "");
        computer.store.SaveSetting("Setting", "MapperIndex", "2");
        computer.files.Put("StationList.dat",
                           "-\n"
                           "-; 5.5; 52.5; ; ; 10.0.0.9; Alpha\n"
                           "-; 6.5; 51.5; ; ; beta.example; Beta; 0; 1; 0; 2024/06/15 12:00:00; 10.0.0.8\n"
                           "-; 123.45678; 12.34567; ; ; 10.0.0.7; Gamma\n");
        network.Start();
        network.server.Relisten();
    }
    /// The peer lets the station in.
    void ServeAtAlpha() {
        listener->LocalPort = StationPort;
        listener->OnConnectionRequest = [this](ConnectionRequest request) {
            if (peer->State() == SocketState::Closed) peer->Accept(request);
        };
        listener->Listen();
    }
    /// The peer visits the station.
    void VisitFromAlpha() {
        peer->Connect("10.0.0.1", StationPort);
        computer.loop.Run(10);
    }
    /// Each text is one read.
    void Say(const std::vector<std::string>& reads) {
        for (const std::string& text : reads) {
            if (peer->State() == SocketState::Connected) peer->SendData(text);
            computer.loop.Run(5);
        }
        computer.loop.Run(20);
    }
    /// What must hold whatever was said. Row 4 can only be reached by its name or its place.
    void Check(std::string_view input) {
        MustHold(errors.reports.empty());
        const std::string table = computer.files.Content("StationList.dat");
        if (table.starts_with("Station")) {  // it was saved
            MustHold(std::ranges::count(table, '\n') == C_NUMBEROFMAPPERS);
            MustHold(std::ranges::count(table, '\r') == 0);
            network.list.StationListGet();
        }
        if (input.find("123.4567") != std::string_view::npos ||
            LowerCase(input).find("gamma") != std::string::npos)
            return;
        const ClassMapper& row = network.mappers[4];
        MustHold(row.sRemoteName == "Gamma" && row.sIP == "10.0.0.7" && row.RemoteX == 123.45678 &&
                 row.Latitude == 12.34567);
    }

    FormControls& controls = SharedControls();
    TestPlatform computer;
    RecordingErrors errors;
    PreciseNow preciseNow{computer.clock};
    AmplitudeLimits limits;
    StationNetwork network{controls, computer.platform,
                           errors,   preciseNow,
                           limits,   [] {
                               return HomeStation{"Home", "", 6, 52, 6, 52, "1.2.3", 0}; }};
    std::unique_ptr<Socket> listener = computer.network.At("10.0.0.9").MakeSocket();
    std::unique_ptr<Socket> peer = computer.network.At("10.0.0.9").MakeSocket();
};

}  // namespace veltrix
