#include "station/station_commands.h"

#include "common/neutral_text.h"
#include "detection/settings_table.h"

namespace veltrix {

namespace {

constexpr int EditorPause = 100;            // ms
constexpr double FarthestDrift = 90000000;  // ms per day
/// The row of the last mark clicked on the map: none yet.
constexpr std::int16_t NoMarkClicked = 0;

}  // namespace

StationCommands::StationCommands(FormControls& controls, SettingsBinding& settings, Platform& platform,
                                 StationNetwork& network)
    : controls_(controls),
      settings_(settings),
      platform_(platform),
      network_(network),
      txtRemoteHost(controls.Text("txtRemoteHost")) {
    settings_.WhenTaken("txtRemoteHost", [this] {
        if (bStarted_) txtRemoteHost_Change();
    });
}

void StationCommands::Start() {
    bStarted_ = true;
    TakeStoredHost();
    ListBox& cmbRemoteHost = controls_.List("cmbRemoteHost");
    cmbRemoteHost.SetListIndex(network_.selection.MapperIndex - 1);
    cmbRemoteHost.OnClick = [this](MouseButton) { cmbRemoteHost_Click(); };
    controls_.Tabs("SSTab1").OnClick = [this](MouseButton) { network_.list.StationListTo(); };
    controls_.Push("cmdEditStationList").OnClick = [this](MouseButton) { cmdEditStationList_Click(); };
    ListBox& CmbStateServer = controls_.List("CmbStateServer");
    CmbStateServer.OnDropDown = [this] { network_.server.ListServerSockets(); };
    CmbStateServer.OnCloseUp = [&CmbStateServer] { CmbStateServer.Clear(); };
    // Not a key of the store: the figure of the selected row of the station list.
    TextBox& txtClockDrift = controls_.Text("txtClockDrift");
    txtClockDrift.OnEntry = [this, &txtClockDrift] {
        const CheckedNumber number = ValidateNumber(txtClockDrift, "0");
        if (!number.good || !ValidateRange(txtClockDrift, -FarthestDrift, FarthestDrift)) return;
        txtClockDrift.SetText(GeneralNumber(number.value));
        network_.mappers[network_.selection.MapperIndex].Corr.SetPreDrift(number.value);
    };
}

/// The address that the user typed in an earlier run leads a station whose list does not yet know anybody
/// there. What the list knows is newer.
void StationCommands::TakeStoredHost() {
    const std::string host = platform_.store.GetSetting("Setting", "RemoteHost", "");
    ClassMapper& row = network_.mappers[network_.selection.MapperIndex];
    if (!host.empty() && !row.MapperActive()) row.sIP = host;
}

void StationCommands::txtRemoteHost_Change() {
    const std::int16_t row = network_.selection.MapperIndex;
    network_.mappers[row].sIP = txtRemoteHost.Text();
    network_.client.Reconnect(row);
}

void StationCommands::ShowRemoteHost(const std::string& address) {
    if (address == txtRemoteHost.Text()) return;
    // A change of the box like any other: saved, and the row's sockets connect anew.
    txtRemoteHost.Enter(address);
}

void StationCommands::cmbRemoteHost_Click() {
    Selection& selection = network_.selection;
    selection.MapperIndex = static_cast<std::int16_t>(controls_.List("cmbRemoteHost").ListIndex() + 1);
    selection.ClientIndex = network_.client.GetClientSocket(NoMarkClicked);
    ShowRemoteHost(network_.mappers[selection.MapperIndex].sIP);
    network_.client.ConnectSelected();
}

void StationCommands::cmdEditStationList_Click() {
    SkippingErrors(
        [&] { network_.list.StationListSave(); }, [&] { platform_.loop.Sleep(EditorPause); },
        [&] { platform_.processes.Start("notepad", {"StationList.dat"}, WindowStyle::Maximized); });
}

}  // namespace veltrix
