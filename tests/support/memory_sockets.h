#pragma once
// A network in memory: the sockets of several computers on one clock that the test sets.

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "common/failure.h"
#include "platform/error_convention.h"
#include "platform/sockets.h"
#include "support/manual_loop.h"

namespace veltrix {

/// Keeps the contract of Sockets, but for its limits: nothing is dropped or given up here. Whatever happens
/// on the network happens one step a millisecond after what causes it: to resolve a host, to begin to connect
/// and to connect take a step each, and so do sent bytes.
class MemoryNetwork {
  public:
    /// REQUIRES that the loop outlives this object.
    explicit MemoryNetwork(ManualLoop& loop) : loop_(loop), timer_(loop.MakeTimer([this] { Step(); })) {
        timer_->SetInterval(1);
    }
    MemoryNetwork(const MemoryNetwork&) = delete;
    MemoryNetwork& operator=(const MemoryNetwork&) = delete;

    /// The sockets of the computer of that address; it joins the network with the first call.
    Sockets& At(const std::string& address) {
        return hosts_.try_emplace(address, *this, address).first->second;
    }
    /// Gives a computer a name.
    void Name(std::string host, std::string address) { names_[std::move(host)] = std::move(address); }

    /// From now on no connect to that address is answered, nor refused.
    void Silence(const std::string& address) { silent_.insert(address); }

  private:
    struct HostSocket;
    struct Host;

    /// One end of a connection.
    struct End {
        std::string address;
        HostSocket* owner = nullptr;  // none while the request is held, and behind its Close()
        std::string unsent;
        std::string arrived;
        bool hasNews = false;  // bytes have arrived that the owner has not been told of
        bool isClosed = false;
        bool knowsOfClose = false;  // the owner was told that the other end is closed
    };
    struct Link {
        std::array<End, 2> ends;  // the connecting one first
    };

    struct Host final : Sockets {
        Host(MemoryNetwork& itsNetwork, std::string itsAddress)
            : network(itsNetwork), address(std::move(itsAddress)) {}
        std::unique_ptr<Socket> MakeSocket() override { return std::make_unique<HostSocket>(*this); }

        HostSocket* Listener(std::int32_t port) const {
            const auto listens = [port](const HostSocket* socket) {
                return socket->state == SocketState::Listening && socket->listeningPort == port;
            };
            const auto found = std::ranges::find_if(sockets, listens);
            return found == sockets.end() ? nullptr : *found;
        }
        ConnectionRequest Hold(std::shared_ptr<Link> link) {
            held.emplace(++lastRequest, std::move(link));
            return lastRequest;
        }
        /// The connection of a request; null when it was taken before.
        std::shared_ptr<Link> Take(ConnectionRequest request) {
            const auto found = held.extract(request);
            return found ? std::move(found.mapped()) : nullptr;
        }

        MemoryNetwork& network;
        std::string address;
        std::vector<HostSocket*> sockets;
        std::map<ConnectionRequest, std::shared_ptr<Link>> held;
        ConnectionRequest lastRequest = 0;
    };

    struct HostSocket final : Socket {
        explicit HostSocket(Host& itsHost) : host(itsHost), network(itsHost.network) {
            host.sockets.push_back(this);
        }
        ~HostSocket() override {
            Close();
            std::erase(host.sockets, this);
        }

        SocketState State() const override { return state; }
        const std::string& RemoteHostIP() const override { return remoteHostIP; }
        std::string LocalIP() const override { return host.address; }
        std::size_t BytesReceived() const override { return link ? Own().arrived.size() : 0; }

        void Listen() override {
            Require(SocketState::Closed);
            if (host.Listener(LocalPort) != nullptr)
                throw Failure(errors::AddressInUse, "Address in use", "Socket");
            state = SocketState::Listening;
            listeningPort = LocalPort;
        }
        bool Accept(ConnectionRequest request) override {
            Require(SocketState::Closed);
            const std::shared_ptr<Link> taken = host.Take(request);
            if (!taken ||
                (taken->ends[0].isClosed && taken->ends[0].unsent.empty() && taken->ends[1].arrived.empty()))
                return false;
            TakeLink(taken, 1);
            network.PostMove(taken, 0);
            return true;
        }
        void Connect() override {
            Require(SocketState::Closed);
            state = SocketState::ResolvingHost;
            activity = std::make_shared<int>(0);
            target = RemoteHost;
            targetPort = RemotePort;
            Later(&HostSocket::Resolve);
        }
        void SendData(std::string_view text) override {
            Require(SocketState::Connected);
            if (text.empty()) return;
            Own().unsent += text;
            network.PostMove(link, side);
        }
        std::string GetData() override { return link ? std::exchange(Own().arrived, {}) : ""; }
        void Close() override {
            LetGo();
            state = SocketState::Closed;
        }

        End& Own() const { return link->ends[side]; }
        void Require(SocketState wanted) const {
            if (state != wanted)
                throw Failure(errors::WrongSocketState, "Not allowed in this state", "Socket");
        }
        void Later(void (HostSocket::*step)()) {
            network.Post([this, step, known = std::weak_ptr(activity)] {
                if (!known.expired()) (this->*step)();
            });
        }
        static void Tell(std::function<void()> handler) {
            if (handler) SkippingErrors(handler);
        }
        void LetGo() {
            activity.reset();
            if (link) network.CloseEnd(std::exchange(link, nullptr), side);
        }
        void TakeLink(std::shared_ptr<Link> taken, std::size_t ownSide) {
            link = std::move(taken);
            side = ownSide;
            Own().owner = this;
            remoteHostIP = link->ends[1 - side].address;
            state = SocketState::Connected;
        }
        void Fail(int number, const std::string& description) {
            LetGo();
            state = SocketState::Error;
            Tell([handler = OnError, number, description] {
                if (handler) handler(number, description);
            });
        }

        void Resolve() {
            const auto named = network.names_.find(target);
            if (named != network.names_.end()) target = named->second;
            in_addr form{};
            if (::inet_pton(AF_INET, target.c_str(), &form) != 1) return Fail(11001, "Host not found");
            remoteHostIP = target;
            state = SocketState::HostResolved;
            Later(&HostSocket::StartConnecting);
        }
        void StartConnecting() {
            if (target == "0.0.0.0" || targetPort < 1 || targetPort > 65535)
                return Fail(10049, "Address is not available");
            state = SocketState::Connecting;
            Later(&HostSocket::TryToConnect);
        }
        void TryToConnect() {
            if (network.silent_.contains(target)) return;
            const auto other = network.hosts_.find(target);
            HostSocket* const listener =
                other == network.hosts_.end() ? nullptr : other->second.Listener(targetPort);
            if (!listener) return Fail(10061, "Connection is forcefully rejected");
            const auto made = std::make_shared<Link>();
            made->ends[0].address = host.address;
            made->ends[1].address = target;
            TakeLink(made, 0);
            const ConnectionRequest request = listener->host.Hold(made);
            listener->remoteHostIP = host.address;
            Tell(OnConnect);
            if (listener->state != SocketState::Listening) return;
            Tell([handler = listener->OnConnectionRequest, request] {
                if (handler) handler(request);
            });
        }

        Host& host;
        MemoryNetwork& network;
        SocketState state = SocketState::Closed;
        std::string remoteHostIP;
        std::int32_t listeningPort = 0;
        std::string target;
        std::int32_t targetPort = 0;
        std::shared_ptr<int> activity;  // stands while the socket connects
        std::shared_ptr<Link> link;
        std::size_t side = 0;
    };

    void Post(std::function<void()> step) {
        steps_.push_back(std::move(step));
        timer_->SetEnabled(true);
    }
    /// Runs what was posted before this moment. A handler that lets events run goes on with the same row.
    void Step() {
        for (std::size_t left = steps_.size(); left > 0 && !steps_.empty(); --left) {
            const std::function<void()> step = std::move(steps_.front());
            steps_.pop_front();
            SkippingErrors(step);
        }
        if (steps_.empty()) timer_->SetEnabled(false);
    }
    void CloseEnd(const std::shared_ptr<Link>& link, std::size_t side) {
        link->ends[side].owner = nullptr;
        link->ends[side].isClosed = true;
        PostMove(link, side);
    }
    void PostMove(const std::shared_ptr<Link>& link, std::size_t from) {
        Post([this, link, from] { Move(*link, from); });
    }
    /// Brings what one end has sent to the other, and then its close.
    void Move(Link& link, std::size_t from) {
        End& sender = link.ends[from];
        End& receiver = link.ends[1 - from];
        const std::string sent = std::exchange(sender.unsent, {});
        if (!receiver.isClosed) receiver.arrived += sent;
        receiver.hasNews = receiver.hasNews || (!receiver.isClosed && !sent.empty());
        if (receiver.owner && std::exchange(receiver.hasNews, false))
            HostSocket::Tell(receiver.owner->OnDataArrival);
        if (!sent.empty() && sender.unsent.empty() && sender.owner)
            HostSocket::Tell(sender.owner->OnSendComplete);
        const bool isEnd = sender.isClosed && sender.unsent.empty();
        if (!isEnd || !receiver.owner || std::exchange(receiver.knowsOfClose, true)) return;
        receiver.owner->state = SocketState::PeerIsClosing;
        HostSocket::Tell(receiver.owner->OnClose);
    }

    ManualLoop& loop_;
    std::unique_ptr<Timer> timer_;
    std::deque<std::function<void()>> steps_;
    std::map<std::string, Host> hosts_;
    std::map<std::string, std::string> names_;
    std::set<std::string> silent_;
};

}  // namespace veltrix
