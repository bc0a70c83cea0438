#include "network/client_side.h"

#include <utility>

#include "common/arithmetic.h"
#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr std::string_view Section = "ClientSocket";
constexpr std::int16_t MostIdleMinutes = 6;
constexpr double RetrySeconds = 30;
constexpr double FarthestDrift = 900000;  // ms per day, both ways
constexpr double DriftStep = 1000;

std::string TagKey(int index) {
    return "Tag" + std::to_string(index);
}

/// A stored tag as one that can stand: no row or an existing one.
std::string Sound(const std::string& tag, const std::string& otherwise) {
    const double row = ValNeutral(tag);
    const bool isSound = tag.empty() || (row == IntegerPart(row) && 0 <= row && row <= C_NUMBEROFMAPPERS);
    return isSound ? tag : otherwise;
}

}  // namespace

ClientSide::ClientSide(Parts parts) : parts_(std::move(parts)) {
    for (int i = 0; i < ClientSockets; ++i) {
        At(i).OnConnect = [this, i] { sckClient_Connect(i); };
        At(i).OnDataArrival = [this, i] { sckClient_DataArrival(i); };
        At(i).OnClose = [this, i] { sckClient_Close(i); };
    }
}

void ClientSide::LoadClientSockets() {
    for (int i = 0; i < ClientSockets; ++i) {
        const std::string own = std::to_string(i);
        Socket& socket = At(i);
        socket.Tag = Sound(parts_.store.GetSetting(Section, TagKey(i), own), own);
        socket.RemoteHost = parts_.list.Rows()[RowOfTag(socket.Tag)].sIP;
        socket.RemotePort = StationPort;
    }
}

void ClientSide::SaveClientSockets() {
    for (int i = 0; i < ClientSockets; ++i) {
        parts_.store.SaveSetting(Section, TagKey(i), At(i).Tag);
        At(i).Close();
    }
}

bool ClientSide::IsTiedTo(const Socket& socket, std::int16_t row) const {
    return !socket.Tag.empty() && RowOfTag(socket.Tag) == row;
}

std::int16_t ClientSide::GetClientSocket(std::int16_t row) {
    const auto taken = [this](int index) {
        parts_.store.SaveSetting("Setting", "ClientIndex", std::to_string(index));
        return static_cast<std::int16_t>(index);
    };
    for (int i = 0; i < ClientSockets; ++i)
        if (At(i).Tag.empty()) return taken(i);
    for (int i = 0; i < ClientSockets; ++i)
        if (IsTiedTo(At(i), row)) return taken(i);
    return static_cast<std::int16_t>((parts_.selection.ClientIndex + 1) % ClientSockets);
}

std::int16_t ClientSide::FindClientSocket(std::int16_t row) const {
    for (int i = 0; i < ClientSockets; ++i)
        if (IsTiedTo(At(i), row)) return static_cast<std::int16_t>(i);
    return parts_.selection.ClientIndex;
}

void ClientSide::ConnectSelected() {
    const int index = parts_.selection.ClientIndex;
    CloseIfOpen(index);
    const std::string row = std::to_string(parts_.selection.MapperIndex);
    At(index).Tag = row;
    parts_.store.SaveSetting("Setting", "MapperIndex", row);
}

void ClientSide::Reconnect(std::int16_t row) {
    for (int i = 0; i < ClientSockets; ++i)
        if (IsTiedTo(At(i), row)) CloseIfOpen(i);
}

void ClientSide::sckClient_Connect(int index) {
    Socket& socket = At(index);
    iIdle_[static_cast<std::size_t>(index)] = 0;
    parts_.errors.LogNote(SocketLabel("sckClient", index) + ".Connected [" + socket.RemoteHost + "] " +
                          socket.RemoteHostIP());
    const HomeStation home = parts_.home();
    socket.SendData(MarkedEntryText({parts_.clock.Now(), std::string(OwnAddress), home.HomeLatitude,
                                     home.HomeLongitude, home.sStationName, home.sAnnouncement}));
    parts_.presence.UpdateStationColors();
}

void ClientSide::sckClient_DataArrival(int index) {
    UnderErrorConvention(parts_.errors, "sckClient_DataArrival", [&] {
        Socket& socket = At(index);
        iIdle_[static_cast<std::size_t>(index)] = 0;
        if (socket.BytesReceived() == 0) return;
        bData_ = true;
        const std::string buffer = socket.GetData();
        parts_.reader.DataArrival(index, RowOfTag(socket.Tag), buffer);
    });
}

void ClientSide::sckClient_Close(int index) {
    Socket& socket = At(index);
    parts_.errors.LogNote(SocketLabel("sckClient", index) + ".Close [" + socket.RemoteHost + "] " +
                          socket.RemoteHostIP());
    socket.Close();
    // The tag stays, which makes it connect again.
    socket.RemoteHost.clear();
    socket.RemotePort = 0;
    parts_.presence.UpdateStationColors();
}

void ClientSide::CloseIfOpen(int index) {
    if (At(index).State() != SocketState::Closed) sckClient_Close(index);
}

void ClientSide::CloseAll() {
    for (int i = 0; i < ClientSockets; ++i) sckClient_Close(i);
}

void ClientSide::ShowState() {
    for (const auto& socket : parts_.sockets.sckClient)
        if (IsTiedTo(*socket, parts_.selection.MapperIndex))
            parts_.txtStateClient.SetText(std::string(SocketStateText(socket->State())));
}

void ClientSide::CloseHeld() {
    if (!IsHeld()) return;
    for (int i = 0; i < ClientSockets; ++i) CloseIfOpen(i);
}

void ClientSide::Upkeep() {
    if (IsHeld()) return;
    for (int i = 0; i < ClientSockets; ++i) SkippingErrors([&] { UpkeepOf(i); });
}

void ClientSide::UpkeepOf(int index) {
    Socket& socket = At(index);
    ClassMapper& row = parts_.list.Rows()[RowOfTag(socket.Tag)];
    const auto place = static_cast<std::size_t>(index);
    switch (socket.State()) {
        case SocketState::Closed:
            if (socket.Tag.empty()) return;
            socket.LocalPort = 0;
            socket.Connect(row.sIP, StationPort);
            iIdle_[place] = 0;
            return;
        case SocketState::Connected:
            return;
        case SocketState::Connecting:
        case SocketState::ResolvingHost:
        case SocketState::Error: {
            const DateTime now = parts_.clock.Now();
            const double elapsed = (now - dLastRetry_[place]) * SecondsPerDay;
            // A clock that was set back must not hold the retries up.
            if (0 <= elapsed && elapsed <= RetrySeconds) return;
            dLastRetry_[place] = now;
            sckClient_Close(index);
            return;
        }
        default:
            sckClient_Close(index);
            if (row.Picture7) row.Picture7->SetBackColor(Black);
            return;
    }
}

void ClientSide::Minute() {
    for (int i = 0; i < ClientSockets; ++i) {
        SkippingErrors([&] { ++iIdle_[static_cast<std::size_t>(i)]; },
                       [&] {
                           if (At(i).State() != SocketState::Connected) return;
                           const std::int16_t index = RowOfTag(At(i).Tag);
                           ClassMapper& row = parts_.list.Rows()[index];
                           parts_.online.Update(row.sRemoteName, At(i).RemoteHostIP(),
                                                FormatNeutral(row.Longitude, LongitudeMask),
                                                FormatNeutral(row.Latitude, LatitudeMask));
                           if (parts_.OptionScan.Checked() && index == parts_.selection.MapperIndex)
                               ScanDrift(row);
                       },
                       [&] {
                           std::int16_t& iIdle = iIdle_[static_cast<std::size_t>(i)];
                           if (iIdle < MostIdleMinutes) return;
                           iIdle = 0;
                           sckClient_Close(i);
                       });
    }
}

/// Tries one drift rate after the other until the strikes of both stations pair.
void ClientSide::ScanDrift(ClassMapper& row) {
    ClassCorrelator& Corr = row.Corr;
    if (Corr.dPreDrift > FarthestDrift) dScanStep_ = -DriftStep;
    if (Corr.dPreDrift < -FarthestDrift) dScanStep_ = DriftStep;
    if (Corr.Median.VarianceMean() < ClassCorrelator::WidestVariance) {
        Corr.UpdatePreDrift(dScanStep_ * 100);
        parts_.txtClockDrift.SetText(GeneralNumber(IntegerPart(Corr.dPreDrift)));
    } else {
        parts_.OptionScan.SetValue(0);
    }
}

}  // namespace veltrix
