#pragma once
// What the user does on the marks of the map: clicks, and the menu that pops up there.

#include <cstdint>
#include <functional>

#include "platform/settings_store.h"
#include "station/form_controls.h"
#include "station/mark_drag.h"
#include "station/station_network.h"

namespace veltrix {

/// Selects, connects and removes stations. The menu's entries act on the cursor row, which is that of the
/// last mark clicked; before the first click, those that need a row do nothing. Owned by the form.
class MarkCommands {
  public:
    /// `onSelected` lets the map and the controls follow the selected row; it also runs when that row has
    /// become another station or none.
    MarkCommands(FormControls& controls, SettingsStore& store, StationNetwork& network, MapMarks& marks,
                 MarkDrag& drag, std::function<void()> onSelected);

    /// Binds the marks and the entries of the menu.
    void Start();

    /// Selects a row and ties a client socket to it, if none is free that of the station whose mark was
    /// clicked before the last one. The housekeeping tick connects it. REQUIRES 0 <= row <= 100.
    void ConnectTo(std::int16_t row);

  private:
    void BindEntry(std::string_view entry, void (MarkCommands::*action)());
    void BindRowEntry(std::string_view entry, void (MarkCommands::*action)());
    void BindMouse(std::int16_t row, Marker& mark);
    void Picture7_MouseUp(std::int16_t row, const MouseEvent& event);
    void cmdSelect_Click();
    void cmdConnect_Click();
    void cmdDisconnect_Click();
    void cmdWhoIs_Click();
    void cmdDelete_Click();
    void cmdResetCnt_Click();
    void cmdResetTotalCnt_Click() {}  // deliberately nothing
    void cmdClearPicSync_Click();
    void cmdResetCorr_Click();
    ClassMapper& CursorRow() { return network_.mappers[iCursor_]; }

    FormControls& controls_;
    SettingsStore& store_;
    StationNetwork& network_;
    MapMarks& marks_;
    MarkDrag& drag_;
    std::function<void()> onSelected_;
    std::int16_t iCursor_ = 0;          // row of the last mark clicked; 0: none yet
    std::int16_t iPreviousCursor_ = 0;  // and of the one before
};

}  // namespace veltrix
