#pragma once
// The sockets of a station, and which station of the list is selected.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/sockets.h"

namespace veltrix {

/// The sockets that other stations are let in on, the one that listens included, and those on which this
/// station listens to others.
inline constexpr int ServerSockets = 20;
inline constexpr int ClientSockets = 2;
/// The server socket that only listens.
inline constexpr int ListenIndex = 0;

/// Made once, for the whole run. The Tag of a server or client socket is the row number of its station, empty
/// while there is none.
struct StationSockets {
    explicit StationSockets(Sockets& sockets) {
        for (auto& socket : sckServer) socket = sockets.MakeSocket();
        for (auto& socket : sckClient) socket = sockets.MakeSocket();
        sckLink = sockets.MakeSocket();
        sckPing = sockets.MakeSocket();
    }

    std::array<std::unique_ptr<Socket>, ServerSockets> sckServer;
    std::array<std::unique_ptr<Socket>, ClientSockets> sckClient;
    std::unique_ptr<Socket> sckLink;
    std::unique_ptr<Socket> sckPing;
};

/// What the user works with.
struct Selection {
    std::int16_t MapperIndex = 1;  ///< the selected station: its row
    std::int16_t ClientIndex = 0;  ///< the current client socket
};

/// The row number in a tag; 0 when there is none. Raises Overflow for a number that no row can have.
std::int16_t RowOfTag(const std::string& tag);

/// How notes name element `index` of an array of sockets, such as "-->sckServer(3)".
std::string SocketLabel(std::string_view array, int index);

/// The name of a state as users see it, such as "Listening".
std::string_view SocketStateText(SocketState state);

}  // namespace veltrix
