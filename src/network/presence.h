#pragma once
// Who is there: the colours of the stations' marks.

#include <string_view>

#include "network/station_list.h"
#include "network/station_sockets.h"

namespace veltrix {

/// Marks stations as heard of, and colours them. Owned by the form.
class Presence {
  public:
    Presence(StationList& list, StationSockets& sockets, Clock& clock)
        : list_(list), sockets_(sockets), clock_(clock) {}

    /// A peer with this address is connected: the first row that has it is on line and heard of now.
    void MarkOnline(std::string_view address, SocketState state);

    /// Colours the mark of every row: grey for a station heard of in the last 30 minutes, yellow for one that
    /// a client socket is tied to and busy with, red for one it is connected to, else half of the map's grey.
    void UpdateStationColors();

    /// The colour of a mark that says nothing.
    static ColourValue BaseColour();

  private:
    StationList& list_;
    StationSockets& sockets_;
    Clock& clock_;
};

}  // namespace veltrix
