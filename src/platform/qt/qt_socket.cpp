#include "platform/qt/qt_socket.h"

#include <QHostInfo>
#include <QNetworkInterface>
#include <QPointer>
#include <QTimer>
#include <cerrno>
#include <chrono>
#include <utility>

#include "common/failure.h"

namespace veltrix {

namespace {

constexpr std::size_t MostReceived = 65536;
constexpr std::size_t MostUnsent = 1 << 20;
constexpr std::chrono::seconds PatienceAtConnect{60};
constexpr std::chrono::seconds RestWithoutDescriptors{1};

bool IsPort(int number) {
    return number > 0 && number <= 65535;
}

Failure FailureOf(int number, const std::string& description) {
    return {number, description, "Socket"};
}

/// The address under which other computers see this one; the loopback one when there is no network.
std::string AddressOfComputer() {
    for (const QHostAddress& address : QNetworkInterface::allAddresses())
        if (address.protocol() == QAbstractSocket::IPv4Protocol && !address.isLoopback())
            return address.toString().toStdString();
    return "127.0.0.1";
}

/// The first IPv4 address of a host; empty when it has none.
std::string AddressIn(const QHostInfo& host) {
    for (const QHostAddress& address : host.addresses())
        if (address.protocol() == QAbstractSocket::IPv4Protocol) return address.toString().toStdString();
    return {};
}

}  // namespace

std::string QtSocket::LocalIP() const {
    const bool isConnected = state_ == SocketState::Connected || state_ == SocketState::PeerIsClosing;
    if (isConnected) return socket_.OwnAddress();
    return sockets_.Address() == AnyAddress ? AddressOfComputer() : sockets_.Address();
}

void QtSocket::Listen() {
    Require(SocketState::Closed, "Listen");
    EndActivity();
    activity_ = new Activity;
    int error = LocalPort == 0 || IsPort(LocalPort) ? socket_.Open() : EADDRNOTAVAIL;
    if (error == 0) error = socket_.Bind({sockets_.Address(), LocalPort});
    if (error == 0) error = socket_.Listen();
    if (error != 0) {
        EndActivity();
        throw FailureOf(errors::AddressInUse, "Port " + std::to_string(LocalPort) +
                                                  " cannot be had: " + SocketErrorOf(error).description);
    }
    state_ = SocketState::Listening;
    Watch(QSocketNotifier::Read, &QtSocket::TakeRequest);
}

bool QtSocket::Accept(ConnectionRequest request) {
    Require(SocketState::Closed, "Accept");
    std::optional<HeldRequests::Held> held = sockets_.Requests().Take(request);
    if (!held || held->socket.IsOver()) return false;
    EndActivity();
    activity_ = new Activity;
    socket_ = std::move(held->socket);
    remoteHostIP_ = std::move(held->address);
    TakeConnection();
    return true;
}

void QtSocket::Connect() {
    Require(SocketState::Closed, "Connect");
    EndActivity();
    activity_ = new Activity;
    wanted_ = {RemoteHost, RemotePort};
    wantedLocalPort_ = IsPort(LocalPort) ? LocalPort : 0;
    state_ = SocketState::ResolvingHost;
    Later(&QtSocket::Resolve);
}

void QtSocket::Resolve() {
    const std::string& host = wanted_.address;
    if (host.empty() || IsDotted(host)) return Resolved(host);
    if (host.find('\0') != std::string::npos) return Resolved({});
    // Neither bound to the activity nor aborted with it: Qt loses the memory of such a lookup.
    QHostInfo::lookupHost(QString::fromStdString(host),
                          [this, activity = QPointer(activity_)](const QHostInfo& found) {
                              if (activity) Resolved(AddressIn(found));
                          });
}

void QtSocket::Resolved(std::string address) {
    if (address.empty()) return Fail(SocketErrorOfNumber(HostNotFound));
    wanted_.address = address;
    remoteHostIP_ = std::move(address);
    state_ = SocketState::HostResolved;
    Later(&QtSocket::StartConnecting);
}

void QtSocket::StartConnecting() {
    // The system would take the address of no computer for this one.
    if (wanted_.address == AnyAddress || !IsPort(wanted_.port)) return Fail(SocketErrorOf(EADDRNOTAVAIL));
    state_ = SocketState::Connecting;
    int error = TryToConnect(wantedLocalPort_);
    // The wished port is busy, or its former connection to the same peer is not yet forgotten.
    const bool isPortTaken = error == EADDRINUSE || error == EADDRNOTAVAIL || error == EACCES;
    if (isPortTaken && wantedLocalPort_ != 0) error = TryToConnect(0);
    if (error != 0 && error != EINPROGRESS) return Fail(SocketErrorOf(error));
    Watch(QSocketNotifier::Write, &QtSocket::ConnectionDecided);
    QTimer::singleShot(PatienceAtConnect, activity_, [this] {
        if (state_ == SocketState::Connecting) Fail(SocketErrorOf(ETIMEDOUT));
    });
}

int QtSocket::TryToConnect(int localPort) {
    int error = socket_.Open();
    if (error == 0 && (localPort != 0 || sockets_.Address() != AnyAddress))
        error = socket_.Bind({sockets_.Address(), localPort});
    if (error == 0) error = socket_.Connect(wanted_);
    return error;
}

void QtSocket::ConnectionDecided() {
    if (const int error = socket_.TakeError(); error != 0) return Fail(SocketErrorOf(error));
    TakeConnection();
    Tell(OnConnect);
}

void QtSocket::TakeConnection() {
    state_ = SocketState::Connected;
    Watch(QSocketNotifier::Read, &QtSocket::TakeBytes);
    Watch(QSocketNotifier::Write, &QtSocket::SendUnsent);
    activity_->writable->setEnabled(false);
}

void QtSocket::TakeRequest() {
    InetSocket::Accepted accepted = socket_.Accept();
    if (accepted.socket) {
        remoteHostIP_ = accepted.address;
        const ConnectionRequest request =
            sockets_.Requests().Hold(std::move(accepted.socket), std::move(accepted.address));
        Tell([handler = OnConnectionRequest, request] {
            if (handler) handler(request);
        });
        return;
    }
    const int error = accepted.error;
    if (error != EMFILE && error != ENFILE && error != ENOBUFS && error != ENOMEM) return;
    // The station goes on waiting in the system; asking again at once would only keep the loop busy.
    activity_->readable->setEnabled(false);
    QTimer::singleShot(RestWithoutDescriptors, activity_, [this] { activity_->readable->setEnabled(true); });
}

void QtSocket::TakeBytes() {
    InetSocket::Read read = socket_.Receive(MostReceived - received_.size());
    if (!read.bytes.empty()) {
        received_ += read.bytes;
        if (received_.size() >= MostReceived) activity_->readable->setEnabled(false);
        Tell(OnDataArrival);
        return;
    }
    if (read.error == EAGAIN) return;
    // To send to a peer that has closed fails in a way of its own; that peer has still closed.
    const int error = read.error == 0 && sendError_ != EPIPE ? sendError_ : read.error;
    if (error != 0) return Fail(SocketErrorOf(error));
    activity_->readable->setEnabled(false);
    state_ = SocketState::PeerIsClosing;
    Tell(OnClose);
}

void QtSocket::SendUnsent() {
    if (sendError_ == 0) {
        const InetSocket::Written written = socket_.Send(unsent_);
        unsent_.erase(0, written.count);
        sendError_ = written.error;
    }
    // What the peer has sent before comes first: reading finds the end.
    if (sendError_ != 0) unsent_.clear();
    if (!unsent_.empty()) return;
    activity_->writable->setEnabled(false);
    if (sendError_ == 0) Tell(OnSendComplete);
}

void QtSocket::SendData(std::string_view text) {
    Require(SocketState::Connected, "SendData");
    if (text.empty() || sendError_ != 0) return;
    if (unsent_.size() + text.size() > MostUnsent) {
        ++Dropped;
        return;
    }
    std::size_t sent = 0;
    if (unsent_.empty()) {
        const InetSocket::Written written = socket_.Send(text);
        sent = written.count;
        sendError_ = written.error;
    }
    unsent_ += text.substr(sent);
    activity_->writable->setEnabled(true);
}

std::string QtSocket::GetData() {
    if (state_ == SocketState::Connected) activity_->readable->setEnabled(true);
    return std::exchange(received_, {});
}

void QtSocket::Close() {
    const bool isConnected = state_ == SocketState::Connected || state_ == SocketState::PeerIsClosing;
    state_ = SocketState::Closed;
    InetSocket socket = std::move(socket_);
    std::string unsent = std::move(unsent_);
    const int error = sendError_;
    EndActivity();
    if (!isConnected) return;
    if (!unsent.empty() && error == 0) return sockets_.Closing().Send(std::move(socket), std::move(unsent));
    socket.EndOrderly();
}

void QtSocket::Fail(const SocketError& error) {
    std::string received = std::move(received_);
    EndActivity();
    received_ = std::move(received);
    state_ = SocketState::Error;
    Tell([handler = OnError, error] {
        if (handler) handler(error.number, error.description);
    });
}

void QtSocket::Require(SocketState state, const char* operation) const {
    if (state_ == state) return;
    throw FailureOf(errors::WrongSocketState, std::string(operation) + ": not allowed in state " +
                                                  std::to_string(static_cast<int>(state_)));
}

void QtSocket::Tell(const std::function<void()>& handler) {
    // A copy, for the handler may bind another one in its own place.
    if (handler) sockets_.Loop().RunHandler(std::function(handler));
}

void QtSocket::Later(void (QtSocket::*step)()) {
    QMetaObject::invokeMethod(
        activity_, [this, step] { (this->*step)(); }, Qt::QueuedConnection);
}

void QtSocket::Watch(QSocketNotifier::Type type, void (QtSocket::*step)()) {
    QSocketNotifier*& notifier = type == QSocketNotifier::Read ? activity_->readable : activity_->writable;
    delete notifier;
    notifier = new QSocketNotifier(socket_.Descriptor(), type, activity_);
    QObject::connect(notifier, &QSocketNotifier::activated, activity_, [this, step] { (this->*step)(); });
    notifier->setEnabled(true);
}

void QtSocket::EndActivity() {
    delete std::exchange(activity_, nullptr);
    socket_ = InetSocket();
    received_.clear();
    unsent_.clear();
    sendError_ = 0;
}

}  // namespace veltrix
