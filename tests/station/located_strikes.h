#pragma once
// A station and a peer that hear the same strikes.

#include <string>
#include <vector>

#include "network_peers.h"

namespace veltrix {

/// Home at 52 N 6 E hears bursts; a peer at 50.5 N 10 E sends its half of each strike at 54 N 11 E.
struct LocatedStrikes : NetworkTest {
    static constexpr double StrikeLongitude = 11;
    static constexpr double StrikeLatitude = 54;
    static constexpr double PeerLongitude = 10;
    static constexpr double PeerLatitude = 50.5;

    Peer peer{computer, "10.0.0.9"};
    std::vector<std::string> fixes;
    int blocks = 0;

    void Connect() {
        Tie(computer, "1", "");
        PutList({{1, "Peer", "10.0.0.9"}});
        peer.Serve(GreetingOf("Peer", "10", "50.5"));
        station.form.OnLocated() = [this](const LocatedStrike& strike) { fixes.push_back(FixLine(strike)); };
        Begin();
        ASSERT_TRUE(peer.IsUp());
    }
    /// Both stations hear a strike; the peer's clock is 700 ms and some jitter ahead.
    void Strike(double remoteError = 0) {
        const double here = CalcBearings(52, 6, StrikeLatitude, StrikeLongitude).dBearing1;
        const double there =
            CalcBearings(PeerLatitude, PeerLongitude, StrikeLatitude, StrikeLongitude).dBearing1;
        station.Feed(Burst(here));
        ++blocks;
        const int sample = blocks * 300 - 249 + 700 * 22 + blocks % 3;
        peer.Say(GeneralDate(computer.clock.Now()) + ", " + FormatNeutral(there + remoteError, "000.0000") +
                 ", " + std::to_string(sample) + ", -30.0, 0, 50.50000, 010.00000, Peer\r");
    }
    /// The place where the strike belongs on the surface.
    static MapPoint Place() {
        const MapPoint up = CalcMapXY(4.43579, 50.93272, 2000, StrikeLongitude, StrikeLatitude);
        return {up.dX, MapSide - up.dY};
    }
    /// Where the pen stands on the map, its upper left pixel.
    MapPoint Pen() {
        return Pixels([](ColourValue colour) { return colour == Cyan; }).front();
    }
    /// Dots of new strikes on the map.
    std::size_t Dots() {
        return Pixels([](ColourValue colour) { return RedOf(colour) == 255 && GreenOf(colour) == 255; })
            .size();
    }

  private:
    /// Those that the map shows right of its caption, row by row.
    template <class Test>
    std::vector<MapPoint> Pixels(Test isWanted) {
        constexpr int CaptionWidth = 110;
        const Bitmap map = *station.form.Controls().Require("Picture4").Snapshot();
        std::vector<MapPoint> found;
        for (int y = 20; y < map.height; ++y)
            for (int x = CaptionWidth; x < map.width; ++x)
                if (isWanted(map.pixels[static_cast<std::size_t>(y * map.width + x)]))
                    found.push_back({static_cast<double>(x), static_cast<double>(y)});
        return found;
    }
};

}  // namespace veltrix
