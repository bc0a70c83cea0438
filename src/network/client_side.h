#pragma once
// The client side: which stations this one listens to, and how the connections to them are kept.

#include <array>
#include <cstdint>
#include <functional>

#include "network/class_online.h"
#include "network/client_reader.h"
#include "network/presence.h"
#include "platform/settings_store.h"

namespace veltrix {

/// The client sockets. A socket is tied to one row of the list by its tag, reconnects by itself, and gives a
/// connection up that was silent for six minutes: a server sends detections only, so under a quiet sky the
/// greeting of the new connection is what keeps its row fresh. Owned by the form.
class ClientSide {
  public:
    /// What it works with. REQUIRES that all of it outlives this object.
    struct Parts {
        StationSockets& sockets;
        Selection& selection;
        StationList& list;
        Presence& presence;
        ClassOnline& online;
        ClientReader& reader;
        SettingsStore& store;
        Clock& clock;
        ErrorReporter& errors;
        std::function<HomeStation()> home;
        CheckBox& OptionHoldClient;
        CheckBox& OptionScan;
        TextBox& txtStateClient;
        TextBox& txtClockDrift;
    };

    explicit ClientSide(Parts parts);

    /// Reads the tags that were saved; at first, socket i is tied to row i.
    void LoadClientSockets();
    /// Saves the tags and closes the sockets.
    void SaveClientSockets();

    /// The socket for a new connection to `row`: a free one, else the one tied to it, else the one after the
    /// current one, which is taken from its station.
    std::int16_t GetClientSocket(std::int16_t row);
    /// The socket tied to `row`, else the current one.
    std::int16_t FindClientSocket(std::int16_t row) const;
    /// Ties the current client socket to the selected station. The housekeeping tick connects it.
    void ConnectSelected();
    /// Lets the sockets tied to `row` connect anew, as its address has changed.
    void Reconnect(std::int16_t row);
    /// Closes a socket, in whatever state it is, and notes it.
    void sckClient_Close(int index);
    void CloseAll();

    /// True from the first data on any client socket on.
    bool HasData() const { return bData_; }

    /// Steps of the housekeeping tick.
    void ShowState();
    void CloseHeld();  ///< while OptionHoldClient is checked
    void Upkeep();     ///< while it is not: connects, and closes what does not get on
    bool IsHeld() const { return parts_.OptionHoldClient.Checked(); }
    void Minute();  ///< ages the connections, and enters those that stand into the online list

  private:
    void sckClient_Connect(int index);
    void sckClient_DataArrival(int index);
    void UpkeepOf(int index);
    void ScanDrift(ClassMapper& row);
    void CloseIfOpen(int index);
    bool IsTiedTo(const Socket& socket, std::int16_t row) const;
    Socket& At(int index) const { return *parts_.sockets.sckClient[static_cast<std::size_t>(index)]; }

    Parts parts_;
    std::array<std::int16_t, ClientSockets> iIdle_{};   // minutes without data
    std::array<DateTime, ClientSockets> dLastRetry_{};  // when a hanging attempt was last cut
    double dScanStep_ = -1000;                          // its sign is the direction of the drift scan
    bool bData_ = false;
};

}  // namespace veltrix
