#include "network/server_side.h"

#include <utility>

#include "common/arithmetic.h"

namespace veltrix {

namespace {

constexpr int FirstPlaceholderPort = 4712;
constexpr int FirstAcceptedPort = 14711;

}  // namespace

ServerSide::ServerSide(Parts parts) : parts_(std::move(parts)), ignored_(parts_.files) {
    for (int i = 0; i < ServerSockets; ++i) {
        Socket& socket = At(i);
        socket.LocalPort = FirstPlaceholderPort + i;
        socket.OnConnectionRequest = [this, i](ConnectionRequest request) {
            sckServer_ConnectionRequest(i, request);
        };
        socket.OnDataArrival = [this, i] { sckServer_DataArrival(i); };
        socket.OnClose = [this, i] { sckServer_Close(i); };
        socket.OnConnect = [this] { parts_.presence.UpdateStationColors(); };
        socket.OnError = [this, i](int, const std::string& description) { sckServer_Error(i, description); };
    }
}

void ServerSide::sckServer_ConnectionRequest(int index, ConnectionRequest request) {
    if (bRequest_) return;
    bRequest_ = true;
    bool bEnd = index != ListenIndex || parts_.optionHoldServer.Checked();
    // An ignore list that cannot be read keeps nobody out.
    UnderErrorConvention(
        parts_.errors, "sckServer_ConnectionRequest",
        [&] { bEnd = bEnd || ignored_.IsIgnored(At(index).RemoteHostIP()); },
        [&] {
            if (!bEnd) LetIn(request);
        });
    bRequest_ = false;
}

void ServerSide::LetIn(ConnectionRequest request) {
    for (int i = 1; i < ServerSockets; ++i) {
        Socket& socket = At(i);
        if (socket.State() != SocketState::Closed) continue;
        socket.LocalPort = FirstAcceptedPort + i;
        if (!socket.Accept(request)) return;  // gone already
        lMessages_[static_cast<std::size_t>(i)] = 0;
        socket.SendData(GreetingText(parts_.home(), parts_.clock.Now()));
        parts_.errors.LogNote(SocketLabel("sckServer", ListenIndex) +
                              ".ConnectionRequest:" + At(ListenIndex).RemoteHostIP());
        return;
    }
}

void ServerSide::sckServer_DataArrival(int index) {
    UnderErrorConvention(parts_.errors, "sckServer_DataArrival", [&] {
        Socket& socket = At(index);
        if (socket.BytesReceived() == 0) return;
        std::string text = socket.GetData();
        // A text that begins with the line end stays whole.
        if (const std::size_t end = text.find(LineEnd); end != std::string::npos && end > 0) text.resize(end);
        std::int32_t& lMessages = lMessages_[static_cast<std::size_t>(index)];
        lMessages = NextCount(lMessages);
        Read(socket, text);
    });
}

void ServerSide::Read(Socket& socket, const std::string& text) {
    if (const PatternFields fields = SplitByPattern(text, MarkedEntryPattern); fields.matched) {
        const bool isOwn =
            fields.field[4] == parts_.home().sStationName || fields.field[1] == socket.LocalIP();
        if (isOwn) return;
        if (fields.field[1] == OwnAddress)
            ReadHello(socket, fields);
        else
            PingFor(socket, fields.field[1]);  // the station that is told of is asked, not believed
    } else if (SplitByPattern(text, PlainEntryPattern).matched) {
        PingFor(socket, socket.RemoteHostIP());
    }
}

void ServerSide::ReadHello(Socket& socket, const PatternFields& fields) {
    const std::array<std::string, 4> station = {"", fields.field[4], fields.field[3], fields.field[2]};
    const std::int16_t row =
        parts_.list.StationListUpdateRemote(station, socket.RemoteHostIP(), socket.LocalIP());
    if (!StationList::StationListIndexValid(row)) return;
    socket.Tag = std::to_string(row);
    parts_.list.Heard(row);
    parts_.receivers.DrawMark(row);
}

void ServerSide::PingFor(Socket& socket, const std::string& address) {
    parts_.ping.ShowPing(socket.RemoteHostIP());
    const std::int16_t row = parts_.ping.StationListPingUpdate(address);
    if (StationList::StationListIndexValid(row)) socket.Tag = std::to_string(row);
}

void ServerSide::sckServer_Close(int index) {
    Socket& socket = At(index);
    parts_.errors.LogNote(SocketLabel("sckServer", index) + ".Close:" + socket.RemoteHostIP());
    socket.Close();
    socket.LocalPort = 0;
    socket.Tag.clear();
    parts_.presence.UpdateStationColors();
}

void ServerSide::sckServer_Error(int index, const std::string& description) {
    parts_.errors.LogNote(SocketLabel("sckServer", index) + ".Error, " + description);
    At(index).Close();
}

void ServerSide::ScanNext() {
    iScan_ = static_cast<std::int16_t>((iScan_ + 1) % ServerSockets);
    Socket& socket = Scanned();
    const bool isConnected = socket.State() == SocketState::Connected;
    parts_.txtStateServer.SetBackColor(White);
    parts_.txtStateServer.SetText(
        std::to_string(iScan_) + " " +
        (isConnected ? socket.RemoteHostIP() : std::string(SocketStateText(socket.State()))));
    if (iScan_ == ListenIndex) {
        parts_.presence.UpdateStationColors();
        if (parts_.receivers.marks) parts_.receivers.marks->DisplayStationConnectionState();
        return;
    }
    parts_.presence.MarkOnline(socket.RemoteHostIP(), socket.State());
    if (isConnected && (!parts_.list.KnownStation(socket.RemoteHostIP()) || IsSilent(iScan_)))
        parts_.txtStateServer.SetBackColor(Yellow);
}

void ServerSide::ScanClosing() {
    Socket& socket = Scanned();
    if (socket.State() == SocketState::PeerIsClosing) socket.Close();
    if (parts_.optionHoldServer.Checked()) socket.Close();
}

void ServerSide::ScanIgnored() {
    Socket& socket = Scanned();
    SkippingErrors(
        [&] {
            if (socket.State() == SocketState::Connected && ignored_.IsIgnored(socket.RemoteHostIP()))
                socket.Close();
        },
        [&] {
            if (socket.State() != SocketState::Connected) socket.Tag.clear();
        });
}

void ServerSide::Relisten() {
    Socket& listener = At(ListenIndex);
    if (parts_.optionHoldServer.Checked() || listener.State() != SocketState::Closed) return;
    listener.LocalPort = StationPort;
    std::string why;
    try {
        listener.Listen();
    } catch (const Failure& failure) {
        why = failure.Description();
    }
    parts_.errors.LogNote(SocketLabel("sckServer", ListenIndex) + ".Listen " + std::to_string(StationPort));
    // It is tried again every second, and told of once.
    const bool bTold = std::exchange(bCannotListen_, !why.empty());
    if (!why.empty() && !bTold && OnCannotListen) OnCannotListen(why);
}

void ServerSide::ListServerSockets() {
    std::vector<std::string> entries;
    for (int i = 1; i < ServerSockets; ++i) {
        const Socket& socket = At(i);
        std::string flags = "____";
        std::string address;
        if (socket.State() == SocketState::Connected) {
            address = socket.RemoteHostIP();
            if (!parts_.list.KnownStation(address)) flags[1] = '?';
            if (IsSilent(i)) flags[2] = 'S';
        }
        entries.push_back(std::to_string(i) + flags + address);
    }
    parts_.CmbStateServer.SetEntries(std::move(entries));
}

void ServerSide::CloseAll() {
    for (auto& socket : parts_.sockets.sckServer) socket->Close();
}

}  // namespace veltrix
