#include "network/detection_sender.h"

#include <algorithm>
#include <utility>

namespace veltrix {

namespace {

constexpr int SendMilliseconds = 10;

}  // namespace

DetectionSender::DetectionSender(Parts parts)
    : parts_(std::move(parts)), Timer6(parts_.loop.MakeTimer([this] { Timer6_Timer(); })) {
    Timer6->SetInterval(SendMilliseconds);
    for (auto& socket : parts_.sockets.sckServer) socket->OnSendComplete = [this] { Timer6_Timer(); };
}

void DetectionSender::BroadcastDetection(const Detection& detection) {
    parts_.entries.latestDetection = detection.dDate;
    if (!parts_.hasClientData()) parts_.entries.SendOnlineEntry();
    const bool isQueued = queue_.EnqueueSend(DetectionText(detection, parts_.home()));
    if (!isQueued && HasPeer()) ++dropped_;
    Timer6->SetEnabled(true);
}

bool DetectionSender::HasPeer() const {
    return std::ranges::any_of(parts_.sockets.sckServer,
                               [](const auto& socket) { return socket->State() == SocketState::Connected; });
}

void DetectionSender::Timer6_Timer() {
    if (iCursor_ == ServerSockets) {
        std::optional<std::string> next = queue_.DequeueSend();
        iCursor_ = 0;
        if (!next) Timer6->SetEnabled(false);
        line_ = std::move(next).value_or("");
        return;
    }
    bool bSent = false;
    do {
        Socket& socket = *parts_.sockets.sckServer[static_cast<std::size_t>(iCursor_)];
        // Before the sending, for a failure of which must not make this socket the next one again.
        iCursor_ = static_cast<std::int16_t>((iCursor_ + 1) % (ServerSockets + 1));
        if (socket.State() != SocketState::Connected) continue;
        bSent = true;
        if (!line_.empty()) socket.SendData(line_);
    } while (!bSent && iCursor_ != ServerSockets);
}

}  // namespace veltrix
