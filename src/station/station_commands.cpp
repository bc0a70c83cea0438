#include "station/station_commands.h"

#include <utility>

#include "common/arithmetic.h"
#include "common/neutral_text.h"
#include "common/trimmed.h"
#include "detection/settings_table.h"
#include "network/ignore_list.h"

namespace veltrix {

namespace {

constexpr int EditorPause = 100;  // ms

}  // namespace

StationCommands::StationCommands(FormControls& controls, SettingsBinding& settings, Platform& platform,
                                 StationNetwork& network, std::function<void(std::int16_t)> connectTo)
    : controls_(controls),
      settings_(settings),
      platform_(platform),
      network_(network),
      connectTo_(std::move(connectTo)),
      txtRemoteHost(controls.Text("txtRemoteHost")),
      txtClockDrift(controls.Text("txtClockDrift")) {
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
    CmbStateServer.OnClick = [this, &CmbStateServer](MouseButton) {
        CmbStateServer_Click(CmbStateServer.Chosen());
    };
    CmbStateServer.OnCloseUp = [&CmbStateServer] { CmbStateServer.Clear(); };
    // Not a key of the store: the figure of the selected row of the station list.
    txtClockDrift.OnEntry = [this] {
        const CheckedNumber number = ValidateNumber(txtClockDrift, "0");
        if (!number.good || !ValidateRange(txtClockDrift, -ClassCorrelator::FarthestPreDrift,
                                           ClassCorrelator::FarthestPreDrift))
            return;
        txtClockDrift.SetText(GeneralNumber(number.value));
        network_.Selected().Corr.SetPreDrift(number.value);
    };
}

/// The address that the user typed in an earlier run leads a station whose list does not yet know anybody
/// there. What the list knows is newer.
void StationCommands::TakeStoredHost() {
    const std::string host = platform_.store.GetSetting("Setting", "RemoteHost", "");
    ClassMapper& row = network_.Selected();
    if (!host.empty() && !row.MapperActive()) row.sIP = host;
}

void StationCommands::txtRemoteHost_Change() {
    const std::int16_t row = network_.selection.MapperIndex;
    network_.mappers[row].sIP = txtRemoteHost.Text();
    network_.client.Reconnect(row);
}

void StationCommands::ShowStation() {
    const ClassMapper& row = network_.Selected();
    controls_.List("cmbRemoteHost").SetListIndex(network_.selection.MapperIndex - 1);
    txtRemoteHost.SetText(row.sIP);
    txtClockDrift.SetText(GeneralNumber(IntegerPart(row.Corr.dPreDrift)));
}

void StationCommands::cmbRemoteHost_Click() {
    connectTo_(static_cast<std::int16_t>(controls_.List("cmbRemoteHost").ListIndex() + 1));
}

void StationCommands::cmdEditStationList_Click() {
    SkippingErrors(
        [&] { network_.list.StationListSave(); }, [&] { platform_.loop.Sleep(EditorPause); },
        [&] { platform_.processes.Start("notepad", {"StationList.dat"}, WindowStyle::Maximized); });
}

/// Offers the address of a connection for the list of those to be thrown out.
void StationCommands::CmbStateServer_Click(const std::string& entry) {
    const std::string address(Trimmed(std::string_view(entry).substr(entry.rfind('_') + 1)));
    SkippingErrors([&] { platform_.clipboard.SetText(address); },
                   [&] {
                       const std::string file(IgnoreList::FileName);
                       if (!network_.server.IsIgnored(address) && platform_.files.Exists(file))
                           platform_.processes.Start("notepad", {file}, WindowStyle::Maximized);
                   });
}

}  // namespace veltrix
