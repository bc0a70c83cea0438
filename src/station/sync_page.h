#pragma once
// The "Sync" tab: a sync display for each connection, and what lies over it.

#include <array>
#include <vector>

#include "location/pair_display.h"
#include "network/station_sockets.h"
#include "station/form_controls.h"

namespace veltrix {

/// Shows the display of the current connection, moves it, and shows or hides the figures over it. Owned by
/// the form.
class SyncPage {
  public:
    SyncPage(FormControls& controls, const Selection& selection);

    /// Binds clicks and buttons.
    void Start();

    /// Shows the display of the current connection alone.
    void ShowCurrent();

    /// The displays with their labels, in the order of the client sockets.
    std::vector<SyncPanel> Panels() const;

    /// The display of the current connection.
    PictureBox& Current() { return *displays_[static_cast<std::size_t>(selection_.ClientIndex)].PicSync; }

  private:
    /// One display and what lies over it.
    struct Display {
        PictureBox* PicSync;
        TextBox* txtDiffTime;
        Label* lblRemoteSampleCountCorrelated;
        Label* lblRemoteSampleCount;
        Label* lblPrevAvgDiffTime;
        Label* lblAvgDiffTime;

        std::array<Control*, 5> Figures() const {
            return {txtDiffTime, lblRemoteSampleCountCorrelated, lblRemoteSampleCount, lblPrevAvgDiffTime,
                    lblAvgDiffTime};
        }
    };

    void PicSync_Click(const Display& display);
    void Move(double formUnits);

    const Selection& selection_;
    Button& cmdLeft;
    Button& cmdRight;
    std::array<Display, ClientSockets> displays_;
    int iClicks_ = 0;  // 0 to 2
};

}  // namespace veltrix
