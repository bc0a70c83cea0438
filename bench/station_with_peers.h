#pragma once
// A whole station on a clock that is set, with two peers that serve it over a network in memory, and all its
// displays and filters on.

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "network/wire_text.h"
#include "platform/qt/desk_files.h"
#include "station/frm_veltrix.h"
#include "support/scratch_folder.h"
#include "support/test_platform.h"

namespace veltrix {

/// A place with a name.
struct Site {
    std::string name;
    double latitude = 0;
    double longitude = 0;

    HomeStation Text() const {
        HomeStation home;
        home.sStationName = name;
        home.HomeLongitude = home.LongitudeField = longitude;
        home.HomeLatitude = home.LatitudeField = latitude;
        home.sVersion = "1.2.3";
        return home;
    }
};

/// The first site is the station's; the others are rows 1 and 2 of its list. Files are real ones. `logs` says
/// whether the logs are on that a user switches.
class StationWithPeers {
  public:
    StationWithPeers(const std::array<Site, 3>& sites, bool logs) : sites_(sites) {
        const auto set = [this](std::string_view section, std::string_view key, const std::string& value) {
            computer.store.SaveSetting(section, key, value);
        };
        set("Setting", "StationName", sites[0].name);
        set("Setting", "Longitude", std::to_string(sites[0].longitude));
        set("Setting", "Latitude", std::to_string(sites[0].latitude));
        set("Setting", "MapperIndex", "1");
        set("ClientSocket", "Tag0", "1");
        set("ClientSocket", "Tag1", "2");
        for (const std::string_view box : {"TOAFilter", "Focus", "ClockDriftCompensation"})
            set("setting", box, "1");
        for (const std::string_view box : {"Log", "NoiseLog"}) set("setting", box, logs ? "1" : "0");
        std::string list;
        for (std::size_t peer = 1; peer < sites.size(); ++peer) {
            list += "Station; " + std::to_string(sites[peer].longitude) + "; " +
                    std::to_string(sites[peer].latitude) + "; ; ; " + Address(peer) + "; " +
                    sites[peer].name + "; 0; 1; 0; 2024/06/15 12:00:00; \n";
            Serve(peer);
        }
        folder.Put("StationList.dat", list);
        form.Form_Initialize();
        form.Form_Load();
        computer.loop.Run(SettleMilliseconds);
    }

    /// True when both peers have the station on the line.
    bool IsConnected() const { return peers_[1].line && peers_[2].line; }

    /// A peer sends a detection; the line arrives while the loop runs.
    void Tell(std::size_t peer, const Detection& detection) {
        peers_[peer].line->SendData(DetectionText(detection, sites_[peer].Text()));
    }

    ScratchFolder folder;
    DeskFiles files{folder.Text()};
    TestPlatform computer;
    FrmVeltrix form{{computer.clock, computer.loop, files, computer.processes, computer.store,
                     computer.messageBox, computer.pictures, computer.glyphs, computer.platform.sockets,
                     computer.clipboard, computer.computer},
                    {}};

  private:
    static constexpr int SettleMilliseconds = 5000;

    struct Peer {
        std::unique_ptr<Socket> listener;
        std::unique_ptr<Socket> line;
    };

    static std::string Address(std::size_t peer) { return "10.0.0." + std::to_string(1 + peer); }

    void Serve(std::size_t peer) {
        Sockets& sockets = computer.network.At(Address(peer));
        Peer& here = peers_[peer];
        here.listener = sockets.MakeSocket();
        here.listener->LocalPort = StationPort;
        here.listener->OnConnectionRequest = [this, &sockets, &here, peer](ConnectionRequest request) {
            here.line = sockets.MakeSocket();
            here.line->OnDataArrival = [&here] { here.line->GetData(); };
            here.line->Accept(request);
            here.line->SendData(GreetingText(sites_[peer].Text(), computer.clock.Now()));
        };
        here.listener->Listen();
    }

    std::array<Site, 3> sites_;
    std::array<Peer, 3> peers_;
};

}  // namespace veltrix
