#pragma once
// The server side: who is let in, what is read from those who are, and how the sockets are looked after.

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "common/split_by_pattern.h"
#include "network/ignore_list.h"
#include "network/ping.h"
#include "network/presence.h"
#include "network/receivers.h"
#include "network/station_list.h"
#include "network/station_sockets.h"
#include "network/wire_text.h"

namespace veltrix {

/// The array of server sockets: one listens, the others each carry one station that was let in. What does not
/// come in sees nothing: there is no refusal. Owned by the form.
class ServerSide {
  public:
    /// What it works with. REQUIRES that all of it outlives this object.
    struct Parts {
        StationSockets& sockets;
        StationList& list;
        Presence& presence;
        Ping& ping;
        const NetworkReceivers& receivers;
        Files& files;
        Clock& clock;
        ErrorReporter& errors;
        std::function<HomeStation()> home;
        CheckBox& optionHoldServer;
        TextBox& txtStateServer;
        ListBox& CmbStateServer;
    };

    explicit ServerSide(Parts parts);

    /// Looks after one socket a second, in the steps of the housekeeping tick. The first moves on to the next
    /// socket and shows it.
    void ScanNext();
    void ScanClosing();  ///< closes what the peer has closed, and everything while the server is held
    void ScanIgnored();  ///< throws out who is on the ignore list, and forgets the station of a closed socket
    void Relisten();     ///< begins to listen, unless that goes on or the server is held

    /// Fills the drop-down list: number, flags ("?" a stranger, "S" silent) and address of each connection.
    void ListServerSockets();

    /// Closes every server socket, the one that listens included.
    void CloseAll();

    /// Whether the user wants that address thrown out. Raises what reading the file raises.
    bool IsIgnored(std::string_view address) { return ignored_.IsIgnored(address); }

    /// The address of this station.
    std::string LocalIP() const { return parts_.sockets.sckServer.front()->LocalIP(); }

    /// Told once when the port cannot be had, until it has been. May be empty.
    std::function<void(const std::string& why)> OnCannotListen;

  private:
    void sckServer_ConnectionRequest(int index, ConnectionRequest request);
    void sckServer_DataArrival(int index);
    void sckServer_Close(int index);
    void sckServer_Error(int index, const std::string& description);
    void LetIn(ConnectionRequest request);
    void Read(Socket& socket, const std::string& text);
    void ReadHello(Socket& socket, const PatternFields& fields);
    void PingFor(Socket& socket, const std::string& address);
    bool IsSilent(int index) const { return lMessages_[static_cast<std::size_t>(index)] < 1; }
    Socket& At(int index) { return *parts_.sockets.sckServer[static_cast<std::size_t>(index)]; }
    Socket& Scanned() { return At(iScan_); }

    Parts parts_;
    IgnoreList ignored_;
    std::array<std::int32_t, ServerSockets> lMessages_{};  // reads since the socket was accepted
    std::int16_t iScan_ = 0;                               // the socket that the last second looked at
    bool bRequest_ = false;                                // a request is being handled
    bool bCannotListen_ = false;                           // the last attempt to listen failed
};

}  // namespace veltrix
