// The contract of Sockets, kept by the computer's network and by the one in memory alike, and what only the
// real one has: ports, descriptors, peers that misbehave.
#include "platform/sockets.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QTimer>
#include <chrono>
#include <filesystem>
#include <vector>

#include "platform/qt/qt_sockets.h"
#include "support/memory_sockets.h"
#include "support/number_raised_by.h"
#include "support/qt_events.h"

namespace veltrix {
namespace {

using namespace errors;
using namespace std::literals;
using Texts = std::vector<std::string>;

constexpr int Port = 4711;

/// A socket that writes down what happens to it.
struct Peer {
    explicit Peer(Sockets& sockets) : socket(sockets.MakeSocket()) {
        socket->OnConnect = [this] { events.push_back("connect"); };
        socket->OnDataArrival = [this] {
            events.push_back("data");
            if (isReading) data += socket->GetData();
        };
        socket->OnClose = [this] { events.push_back("close"); };
        socket->OnError = [this](int number, const std::string& text) {
            events.push_back("error " + std::to_string(number));
            EXPECT_FALSE(text.empty());
        };
        socket->OnSendComplete = [this] { ++sendsComplete; };
        socket->OnConnectionRequest = [this](ConnectionRequest request) { requests.push_back(request); };
    }
    SocketState State() const { return socket->State(); }
    void Listen() const {
        socket->LocalPort = Port;
        socket->Listen();
    }

    std::unique_ptr<Socket> socket;
    Texts events;
    std::string data;
    bool isReading = true;
    int sendsComplete = 0;
    std::vector<ConnectionRequest> requests;
};

/// An address of this process's own on the loopback network, for the computer of that number.
std::string AddressOf(int computer) {
    const int own = static_cast<int>(::getpid()) % 16384;
    return "127.42." + std::to_string(own / 64) + "." + std::to_string(own % 64 * 4 + computer);
}

struct SocketsContract : WithEvents, ::testing::WithParamInterface<bool> {
    SocketsContract() { listener.Listen(); }

    Sockets& At(int computer) {
        if (GetParam()) return network.At(AddressOf(computer));
        return real.try_emplace(computer, loop, AddressOf(computer)).first->second;
    }
    EventLoop& Events() { return GetParam() ? static_cast<EventLoop&>(manual) : loop; }
    bool Wait(const std::function<bool()>& condition) {
        if (!GetParam()) return RunUntil(condition);
        for (int milliseconds = 0; milliseconds < 10000 && !condition(); ++milliseconds) manual.Run(1);
        return condition();
    }
    void Settle() {
        const auto end = std::chrono::steady_clock::now() + 50ms;
        Wait([&] { return std::chrono::steady_clock::now() > end; });
    }
    /// Connects `client` to the station of computer 1, whose `server` accepts it.
    void Join() {
        listener.socket->OnConnectionRequest = [&](ConnectionRequest request) {
            server.socket->Accept(request);
        };
        client.socket->Connect(AddressOf(1), Port);
        ASSERT_TRUE(Wait(
            [&] { return client.State() == SocketState::Connected && server.State() == client.State(); }));
    }

    ManualClock clock;
    ManualLoop manual{clock};
    MemoryNetwork network{manual};
    QtEventLoop loop;
    std::map<int, QtSockets> real;
    Peer listener{At(1)}, server{At(1)}, client{At(2)};
};

INSTANTIATE_TEST_SUITE_P(OnQtAndInMemory, SocketsContract, ::testing::Bool());

TEST_P(SocketsContract, AStationIsLetInAndGreeted) {
    listener.socket->OnConnectionRequest = [&](ConnectionRequest request) {
        server.socket->LocalPort = 14712;
        server.socket->Accept(request);
        server.socket->SendData("greeting");
        EXPECT_EQ(server.sendsComplete, 0);
    };
    client.socket->Connect(AddressOf(1), Port);
    EXPECT_EQ(NumberRaisedBy([&] { client.socket->Connect(); }), WrongSocketState);
    SocketState last = SocketState::ResolvingHost;
    EXPECT_EQ(client.State(), last);
    ASSERT_TRUE(Wait([&] {
        EXPECT_GE(client.State(), std::exchange(last, client.State()));
        return client.data == "greeting" && server.sendsComplete == 1;
    }));
    EXPECT_EQ(client.events, (Texts{"connect", "data"}));
    EXPECT_EQ(listener.State(), SocketState::Listening);
    EXPECT_EQ(NumberRaisedBy([&] { Peer(At(1)).Listen(); }), AddressInUse);
    Peer(At(2)).Listen();
    EXPECT_EQ(client.socket->RemoteHostIP(), server.socket->LocalIP());
    EXPECT_EQ(server.socket->RemoteHostIP(), client.socket->LocalIP());
    EXPECT_EQ(server.socket->LocalIP() + client.socket->LocalIP(), AddressOf(1) + AddressOf(2));
    EXPECT_EQ(server.socket->LocalPort, 14712);
}

TEST_P(SocketsContract, AConnectThatFailsSaysSoFromTheLoop) {
    network.Name("localhost", AddressOf(3));
    const std::tuple<std::string, int, const char*> cases[] = {
        {AddressOf(3), Port, "error 10061"}, {"", Port, "error 11001"},
        {"0.0.0.0", Port, "error 10049"},    {std::string(300, 'h'), Port, "error 11001"},
        {AddressOf(1), 0, "error 10049"},    {"localhost", 1, "error 10061"}};
    for (const auto& [host, port, event] : cases) {
        client.events.clear();
        client.socket->Connect(host, port);
        ASSERT_TRUE(Wait([&] { return client.State() == SocketState::Error; })) << host;
        EXPECT_EQ(client.events, Texts{event}) << host;
        EXPECT_EQ(NumberRaisedBy([&] { client.socket->Connect(); }), WrongSocketState);
        client.socket->Close();
    }
}

TEST_P(SocketsContract, AllDataComesBeforeTheClose) {
    Join();
    client.isReading = false;
    for (const char* const text : {"one\r", "", "two\r"}) server.socket->SendData(text);
    server.socket->Close();
    ASSERT_TRUE(Wait([&] { return client.State() == SocketState::PeerIsClosing; }));
    EXPECT_EQ(client.events.back(), "close");
    EXPECT_EQ(client.socket->BytesReceived(), 8u);
    EXPECT_EQ(client.socket->GetData(), "one\rtwo\r");
    EXPECT_EQ(NumberRaisedBy([&] { client.socket->SendData("x"); }), WrongSocketState);
    client.socket->Close();
    EXPECT_EQ(server.events, Texts{}) << "it closed by itself";
}

TEST_P(SocketsContract, NothingIsToldOfWhatWasClosed) {
    Peer(At(2)).socket->Connect(AddressOf(1), Port);  // and is gone
    for (const char* const host : {"0.0.0.0", "localhost"}) {
        client.socket->Connect(host, 1);
        client.socket->Close();
        client.socket->Close();
    }
    Join();
    server.socket->SendData("x");
    client.socket->Close();
    Settle();
    EXPECT_EQ(client.events, Texts{"connect"});
    EXPECT_EQ(server.State(), SocketState::PeerIsClosing);
}

TEST_P(SocketsContract, AHandlerMayStartItsSocketAnewAndMayFail) {
    listener.socket->OnConnectionRequest = [&](ConnectionRequest request) {
        server.socket->Close();
        server.socket->Accept(request);
        Events().DoEvents();
        throw Failure(Internal, "after the request", "Test");
    };
    server.socket->OnDataArrival = [&] { server.socket->Close(); };
    int connects = 0;
    const auto connectAnew = [&] {
        client.socket->Close();
        if (connects < 4) client.socket->Connect(AddressOf(1), Port);
    };
    client.socket->OnConnect = [&] {
        if (++connects == 1) {
            connectAnew();
            return Events().DoEvents();
        }
        client.socket->SendData("bye");
        throw Failure(Internal, "after the connect", "Test");
    };
    client.socket->OnClose = connectAnew;
    client.socket->OnError = [&](int, const std::string&) { connectAnew(); };
    client.socket->Connect(AddressOf(3), Port);
    EXPECT_TRUE(Wait([&] { return connects == 4 && client.State() == SocketState::Closed; }));
}

TEST_P(SocketsContract, ARequestIsHeldWithItsDataForAnySocket) {
    std::deque<Peer> clients;
    for (std::size_t i = 0; i < 4; ++i) {
        Peer& newest = clients.emplace_back(At(2));
        newest.socket->Connect(AddressOf(1), Port);
        ASSERT_TRUE(Wait(
            [&] { return listener.requests.size() == i + 1 && newest.State() == SocketState::Connected; }));
        if (i < 3) newest.socket->SendData("early " + std::to_string(i));
    }
    EXPECT_EQ(NumberRaisedBy([&] { listener.socket->Accept(listener.requests[0]); }), WrongSocketState);
    listener.socket->Close();
    listener.socket->Accept(listener.requests[0]);
    EXPECT_TRUE(Wait([&] { return listener.data == "early 0"; }));
    for (const std::size_t leaving : {1u, 3u}) clients[leaving].socket->Close();
    Settle();
    server.socket->Accept(listener.requests[1]);
    EXPECT_TRUE(Wait([&] { return server.State() == SocketState::PeerIsClosing; }));
    EXPECT_EQ(server.data, "early 1") << "the peer has gone, what it said has not";
    server.socket->Close();
    for (const ConnectionRequest request : {listener.requests[1], listener.requests[3], 4711})
        EXPECT_FALSE(server.socket->Accept(request)) << request;
    EXPECT_EQ(clients[2].State(), SocketState::Connected) << "it waits without a word";
    server.Listen();
}

/// The limits, which the network in memory does not have.
struct SocketLimits : SocketsContract {};
INSTANTIATE_TEST_SUITE_P(OnQt, SocketLimits, ::testing::Values(false));

TEST_P(SocketLimits, OfMoreThan64RequestsTheOldestIsGivenUp) {
    std::deque<Peer> clients;
    while (clients.size() < 66) {
        clients.emplace_back(At(2)).socket->Connect(AddressOf(1), Port);
        ASSERT_TRUE(Wait([&] { return listener.requests.size() == clients.size(); }));
    }
    EXPECT_TRUE(Wait([&] { return clients[1].State() == SocketState::PeerIsClosing; }));
    EXPECT_FALSE(server.socket->Accept(listener.requests[1]));
    EXPECT_TRUE(server.socket->Accept(listener.requests[2]));
}

TEST_P(SocketLimits, APeerThatDoesNotReadCostsWholeTextsOnly) {
    Join();
    client.isReading = false;
    constexpr std::size_t Length = 60000, Count = 600;
    for (std::size_t i = 0; i < Count; ++i) {
        server.socket->SendData(std::string(Length, static_cast<char>('a' + i % 26)));
        if (i % 100 == 99) Settle();
    }
    EXPECT_LE(client.socket->BytesReceived(), 65536u);
    server.sendsComplete = 0;
    client.isReading = true;
    client.data = client.socket->GetData();
    ASSERT_TRUE(Wait([&] { return server.sendsComplete == 1; }));
    for (const std::size_t length : {(1u << 20) + 1, 1u}) server.socket->SendData(std::string(length, '.'));
    ASSERT_TRUE(Wait([&] { return client.data.ends_with('.'); }));
    client.data.pop_back();
    EXPECT_LT(client.data.size(), Length * Count);
    for (std::size_t i = 0; i < client.data.size(); i += Length)
        EXPECT_EQ(client.data.substr(i, Length), std::string(Length, client.data[i]));
}

/// A plain socket of the system that has connected, as the bad peer of a station.
InetSocket Visitor(const std::string& address) {
    InetSocket visitor;
    EXPECT_FALSE(visitor.Open() || ::fcntl(visitor.Descriptor(), F_SETFL, 0));  // its calls wait
    EXPECT_EQ(visitor.Connect({address, Port}), 0);
    return visitor;
}

struct QtSocketsTest : WithEvents {
    QtEventLoop loop;
    QtSockets sockets{loop, AddressOf(1)};
};

TEST_F(QtSocketsTest, AConnectionLeavesFromTheWishedPortOrAnotherButAlwaysFromTheAddress) {
    InetSocket server;
    ASSERT_FALSE(server.Open() || server.Bind({AddressOf(2), Port}) || server.Listen());
    Peer one(sockets), two(sockets);
    std::vector<int> ports;
    for (Peer* const client : {&one, &two}) {
        client->socket->LocalPort = 24711;
        client->socket->Connect(AddressOf(2), Port);
        InetSocket::Accepted accepted;
        ASSERT_TRUE(RunUntil([&] { return bool((accepted = server.Accept()).socket); }));
        EXPECT_EQ(accepted.address, AddressOf(1));
        sockaddr_in form{};
        socklen_t size = sizeof form;
        ::getpeername(accepted.socket.Descriptor(), reinterpret_cast<sockaddr*>(&form), &size);
        ports.push_back(ntohs(form.sin_port));
    }
    EXPECT_EQ(ports[0], 24711);
    EXPECT_NE(ports[1], 24711) << "its connection to the same peer still stands";

    QtSockets elsewhere(loop, "203.0.113.7"), anywhere(loop, AnyAddress);
    Peer homeless(elsewhere);
    homeless.socket->Connect(AddressOf(2), Port);
    EXPECT_TRUE(RunUntil([&] { return homeless.events == Texts{"error 10049"}; })) << "no such address here";
    EXPECT_NE(anywhere.MakeSocket()->LocalIP(), AnyAddress);
}

/// That nothing is left of it in memory is for the sanitizers to see.
TEST_F(QtSocketsTest, TheAnswerToALookupThatWasGivenUpGoesNowhere) {
    Peer client(sockets);
    for (int i = 0; i < 20; ++i) {
        client.socket->Connect("localhost", 1);
        loop.DoEvents();
        client.socket->Close();
    }
    client.socket->Connect("localhost", 1);
    EXPECT_TRUE(RunUntil([&] { return client.State() == SocketState::Error; }));
    EXPECT_EQ(client.events.size(), 1U);
}

TEST_F(QtSocketsTest, WhatIsNotReadDoesNotKeepTheLoopBusyAndComesBeforeAReset) {
    Peer listener(sockets), full(sockets), ended(sockets), cutOff(sockets);
    listener.Listen();
    std::deque<InetSocket> visitors;
    for (Peer* const server : {&full, &ended, &cutOff}) {
        visitors.push_back(Visitor(AddressOf(1)));
        ASSERT_TRUE(RunUntil([&] { return listener.requests.size() == visitors.size(); }));
        server->isReading = false;
        server->socket->Accept(listener.requests.back());
        ASSERT_EQ(visitors.back().Send(std::string(99999, 'x')).count, 99999u);
        ASSERT_TRUE(RunUntil([&] { return server->socket->BytesReceived() == 65536; }));
    }
    full.socket->SendData(std::string(1 << 20, 'x'));
    ended.socket->GetData();
    ASSERT_EQ(::shutdown(visitors[1].Descriptor(), SHUT_WR), 0);
    ASSERT_TRUE(RunUntil([&] { return ended.State() == SocketState::PeerIsClosing; }));
    EXPECT_EQ(ended.socket->BytesReceived(), 99999u - 65536u);
    const linger atOnce{1, 0};  // a close that resets
    ::setsockopt(visitors[2].Descriptor(), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    visitors.pop_back();
    cutOff.socket->SendData("x");
    int turns = 0;  // of the loop that find something to do
    QEventLoop inner;
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &inner,
                     [&turns] { ++turns; });
    QTimer::singleShot(100ms, &inner, [&inner] { inner.quit(); });
    inner.exec();
    EXPECT_LT(turns, 30);
    cutOff.isReading = true;
    cutOff.data = cutOff.socket->GetData();
    EXPECT_TRUE(RunUntil([&] { return cutOff.events.back() == "error 10054"; }));
    EXPECT_EQ(cutOff.data.size(), 99999u) << "a reset is an error behind the data";
}

TEST_F(QtSocketsTest, NoDescriptorOutlivesItsConnection) {
    const auto descriptors = [] {
        const std::filesystem::directory_iterator all("/proc/self/fd");
        return static_cast<std::size_t>(std::distance(begin(all), end(all)));
    };
    loop.DoEvents();
    const std::size_t before = descriptors();
    {
        InetSocket server;
        ASSERT_FALSE(server.Open() || server.Bind({AddressOf(2), Port}) || server.Listen());
        HeldRequests requests(1ms);
        LastWords closing(50ms);
        std::deque<InetSocket> visitors;
        for (int i = 0; i < 100; ++i) {
            visitors.push_back(Visitor(AddressOf(2)));
            InetSocket::Accepted accepted = server.Accept();
            if (i % 2 == 0)
                requests.Hold(std::move(accepted.socket), accepted.address);
            else
                closing.Send(std::move(accepted.socket), std::string(i == 1 ? 1 : 8 << 20, 'x'));
        }
        EXPECT_TRUE(RunUntil([&] { return descriptors() <= before + 1 + visitors.size(); }));
        EXPECT_EQ(requests.Count(), 0u);
        EXPECT_EQ(visitors[0].Receive(16).bytes, "");
        EXPECT_EQ(visitors[1].Receive(16).bytes, "x") << "its text has still left";
    }
    EXPECT_TRUE(RunUntil([&] { return descriptors() <= before; }));
}

}  // namespace
}  // namespace veltrix
