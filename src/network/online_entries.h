#pragma once
// How the online list spreads: an entry at a time, to all servers that this station is connected to.

#include <functional>

#include "network/class_online.h"
#include "network/station_list.h"
#include "network/station_sockets.h"
#include "network/wire_text.h"

namespace veltrix {

/// Owned by the form.
class OnlineEntries {
  public:
    OnlineEntries(ClassOnline& online, StationSockets& sockets, StationList& list,
                  std::function<HomeStation()> home);

    /// Takes the top of the online list and sends it to each connected server: marked to those that
    /// understand it, else plain. An empty list does nothing.
    void SendOnlineEntry();

    DateTime latestDetection = 0;  ///< of this station; it stamps plain entries

  private:
    ClassOnline& online_;
    StationSockets& sockets_;
    StationList& list_;
    std::function<HomeStation()> home_;
};

}  // namespace veltrix
