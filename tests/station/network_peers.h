#pragma once
// A station among others on a network in memory.

#include <deque>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "common/neutral_text.h"
#include "network/wire_text.h"
#include "station/station_fixture.h"

namespace veltrix {

/// Any program at an address of its own: it visits the station at 10.0.0.1, or serves as a station does.
struct Peer {
    struct Line {
        std::unique_ptr<Socket> socket;
        std::string received;
        bool IsUp() const { return socket->State() == SocketState::Connected; }
    };

    Peer(TestPlatform& itsComputer, const std::string& address)
        : computer(itsComputer), sockets(computer.network.At(address)) {}

    Line& Add() {
        Line& line = lines.emplace_back(Line{sockets.MakeSocket(), ""});
        line.socket->OnDataArrival = [&line] { line.received += line.socket->GetData(); };
        return line;
    }
    Line& Visit(int port = StationPort) {
        Line& line = Add();
        line.socket->Connect("10.0.0.1", port);
        computer.loop.Run(30);
        return line;
    }
    bool IsUp() const { return lines.back().IsUp(); }
    void Say(const std::string& text) {
        lines.back().socket->SendData(text);
        computer.loop.Run(30);
    }
    /// From now on lets everybody in, with this text, and notes when.
    void Serve(const std::string& greeting) {
        listener = sockets.MakeSocket();
        listener->LocalPort = StationPort;
        listener->OnConnectionRequest = [this, greeting](ConnectionRequest request) {
            Line& line = Add();
            line.socket->Accept(request);
            line.socket->SendData(greeting);
            visits.push_back(computer.clock.Now());
        };
        listener->Listen();
    }

    TestPlatform& computer;
    Sockets& sockets;
    std::unique_ptr<Socket> listener;
    std::deque<Line> lines;  ///< the last one is the newest
    std::vector<DateTime> visits;
};

/// A greeting of a station of that name and place.
inline std::string GreetingOf(const std::string& name, const std::string& longitude,
                              const std::string& latitude = "50.5") {
    return "#O2024/06/15 12:00:00 Connected to Veltrix, " + name + ", " + longitude + ", " + latitude +
           ", 1.2.3, 17\n\r";
}

/// A station "Home" at 10.0.0.1, tied to nobody until a test says so.
struct NetworkTest : StationTest {
    NetworkTest() { Settle(computer, "Home", "6", "52"); }

    static void Settle(TestPlatform& at, const std::string& name, const std::string& longitude,
                       const std::string& latitude) {
        at.store.SaveSetting("Setting", "StationName", name);
        at.store.SaveSetting("Setting", "Longitude", longitude);
        at.store.SaveSetting("Setting", "Latitude", latitude);
        Tie(at, "", "");
    }
    static void Tie(TestPlatform& at, const std::string& row0, const std::string& row1) {
        at.store.SaveSetting("ClientSocket", "Tag0", row0);
        at.store.SaveSetting("ClientSocket", "Tag1", row1);
        at.store.SaveSetting("Setting", "MapperIndex", row0);
    }
    struct Row {
        int row;
        std::string name, ip;
        int minutesAgo = 0;  ///< last heard of
    };
    /// Lays a list there as a user's editor does. Its rows ascend.
    void PutList(std::initializer_list<Row> rows) {
        std::string table;
        int next = 1;
        for (const Row& r : rows) {
            for (; next < r.row; ++next) table += "-; 0; 0; ; ; ; \n";
            table += "Station; " + std::to_string(next++) + ".5; 50.5; ; ; " + r.ip + "; " + r.name +
                     "; 0; 1; 0; " + GeneralDate(computer.clock.Now() - r.minutesAgo / 1440.0) + "; \n";
        }
        computer.files.Put("StationList.dat", table);
    }
    void Begin() {
        station.Start();
        Wait(3.5);
    }
    void Wait(double seconds) { computer.loop.Run(static_cast<std::int64_t>(seconds * 1000)); }
    /// The rows in use, as "1 Alpha, 3 Beta, ".
    static std::string Rows(TestStation& of) {
        std::string rows;
        int row = 0;
        for (const std::string& line : of.requests.Answer("get cmbRemoteHost"))
            if (++row; line.size() > 2) rows += std::to_string(row) + " " + line.substr(2) + ", ";
        return rows;
    }
};

}  // namespace veltrix
