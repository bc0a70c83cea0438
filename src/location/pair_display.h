#pragma once
// What the form shows of a pair of stations: the sync display of each connection, and the figures of the
// selected station.

#include <vector>

#include "display/surface.h"
#include "location/class_mapper.h"
#include "platform/controls.h"

namespace veltrix {

/// The sync display of one connection, with the labels that belong to it.
struct SyncPanel {
    Surface& PicSync;
    Label& lblAvgDiffTime;
    Label& lblPrevAvgDiffTime;
    Label& lblRemoteSampleCountCorrelated;
    Label& lblRemoteSampleCount;
};

/// The figures of one offered detection.
struct PairFigures {
    bool bOk = false;         ///< paired, by a good detection
    bool bDoNotPlot = false;  ///< but not to be plotted
    double dDiffTime = 0;     ///< ms
    double lmY = 0;           ///< ms
    double dDirLocal = 0;     ///< degrees
    double dDirRemote = 0;
};

/// Owned by who makes the fixes.
class PairDisplay {
  public:
    /// What it works with. REQUIRES that all of it outlives this object.
    struct Parts {
        std::vector<SyncPanel> panels;  ///< one for each client socket
        TextBox& txtLocal;
        TextBox& txtRemote;
        TextBox& txtClockDrift;
        Label& lblStrikeCount4;
    };

    explicit PairDisplay(Parts parts) : parts_(std::move(parts)) {}

    /// The sync display of a client socket. Throws std::out_of_range for one that is none.
    Surface& PicSync(int socket) { return Panel(socket).PicSync; }

    /// Shows the figures of the selected station.
    void Show(int socket, const ClassMapper& mapper, const PairFigures& figures);

    /// Shows the drift rate of the selected station.
    void ShowDrift(const ClassMapper& mapper);

  private:
    SyncPanel& Panel(int socket) { return parts_.panels.at(static_cast<std::size_t>(socket)); }

    Parts parts_;
};

}  // namespace veltrix
