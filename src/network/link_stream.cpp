#include "network/link_stream.h"

#include "common/calc_angles.h"
#include "location/mod_calc_globe.h"
#include "network/wire_text.h"

namespace veltrix {

namespace {

constexpr int AcceptedPort = 14712;
constexpr int LinkStatus = -1;

}  // namespace

LinkStream::LinkStream(StationSockets& sockets, PreciseNow& preciseNow, ErrorReporter& errors)
    : sckLink(*sockets.sckLink), preciseNow_(preciseNow), errors_(errors) {
    sckLink.OnConnectionRequest = [this](ConnectionRequest request) { sckLink_ConnectionRequest(request); };
    // Nothing is read from a link client, but what it sends must not stand in the way of its end.
    sckLink.OnDataArrival = [this] { sckLink.GetData(); };
}

void LinkStream::sckLink_ConnectionRequest(ConnectionRequest request) {
    if (sckLink.State() != SocketState::Listening) return;
    sckLink.Close();
    sckLink.LocalPort = AcceptedPort;
    sckLink.Accept(request);
}

void LinkStream::Upkeep() {
    if (sckLink.State() == SocketState::Closed) {
        sckLink.LocalPort = LinkPort;
        SkippingErrors([&] { sckLink.Listen(); },
                       [&] { errors_.LogNote("-->sckLink.Listen " + std::to_string(LinkPort)); });
    } else if (sckLink.State() != SocketState::Listening && sckLink.State() != SocketState::Connected) {
        sckLink.Close();
    }
}

void LinkStream::UpdateLink(double HomeLongitude, double HomeLatitude, double& LongitudeLightning,
                            double LatitudeLightning, bool bDoNotPlot) {
    if (LongitudeLightning == 0 || LatitudeLightning == 0 || bDoNotPlot) return;
    if (sckLink.State() != SocketState::Connected) return;
    const double dDistance = CalcDistance(HomeLatitude, HomeLongitude, LatitudeLightning, LongitudeLightning);
    if (LongitudeLightning >= 180) LongitudeLightning -= 360;
    const double dBearing =
        CalcBearings(HomeLatitude, HomeLongitude, LatitudeLightning, LongitudeLightning).dBearing1;
    sckLink.SendData(FormatLinkLine(preciseNow_.Now(), dDistance, CalcModulo(dBearing, 360), LinkStatus));
}

}  // namespace veltrix
