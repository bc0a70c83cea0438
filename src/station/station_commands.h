#pragma once
// What the user does on the "Remote" tab.

#include <functional>
#include <string>

#include "platform/platform.h"
#include "station/form_controls.h"
#include "station/settings_binding.h"
#include "station/station_network.h"

namespace veltrix {

/// Chooses the station to connect to, its address, and edits the list. Owned by the form.
class StationCommands {
  public:
    /// `connectTo` selects a row and connects to its station.
    StationCommands(FormControls& controls, SettingsBinding& settings, Platform& platform,
                    StationNetwork& network, std::function<void(std::int16_t)> connectTo);

    /// Binds the controls. REQUIRES that the settings are loaded and the network has started.
    void Start();

    /// Lets the boxes of the tabs show the selected station.
    void ShowStation();

  private:
    void cmbRemoteHost_Click();
    void txtRemoteHost_Change();
    void cmdEditStationList_Click();
    void CmbStateServer_Click(const std::string& entry);
    void TakeStoredHost();

    FormControls& controls_;
    SettingsBinding& settings_;
    Platform& platform_;
    StationNetwork& network_;
    std::function<void(std::int16_t)> connectTo_;
    TextBox& txtRemoteHost;
    TextBox& txtClockDrift;
    bool bStarted_ = false;
};

}  // namespace veltrix
