#pragma once
// The one-way stream of located strikes for an outside display.

#include "network/station_sockets.h"
#include "platform/error_convention.h"
#include "timebase/precise_now.h"

namespace veltrix {

/// Serves one link client at a time: while one is connected, nobody listens. Owned by the form.
class LinkStream {
  public:
    LinkStream(StationSockets& sockets, PreciseNow& preciseNow, ErrorReporter& errors);

    /// Once a second: begins to listen when the socket is closed, and closes it when it is neither listening
    /// nor connected.
    void Upkeep();

    /// Sends the link line of a strike, unless it has no position, is not to be plotted, or nobody listens.
    /// A longitude of 180 degrees or above has 360 subtracted, in place. All in degrees.
    void UpdateLink(double HomeLongitude, double HomeLatitude, double& LongitudeLightning,
                    double LatitudeLightning, bool bDoNotPlot);

  private:
    void sckLink_ConnectionRequest(ConnectionRequest request);

    Socket& sckLink;
    PreciseNow& preciseNow_;
    ErrorReporter& errors_;
};

}  // namespace veltrix
