#include "station/mark_commands.h"

#include <string>
#include <string_view>
#include <utility>

#include "display/colours.h"

namespace veltrix {

namespace {

/// The labels of who-is; the first one lies beside the mark.
constexpr std::string_view WhoIsLabels[] = {"lblWhoIs",           "LblStationName",       "lblStationIp",
                                            "lblStationHostName", "LblStationLastHeared", "LblStationClock"};
/// What the correlator shows, for each client socket.
constexpr std::string_view CorrelatorLabels[] = {"lblAvgDiffTime", "lblPrevAvgDiffTime",
                                                 "lblRemoteSampleCountCorrelated", "lblRemoteSampleCount"};

}  // namespace

MarkCommands::MarkCommands(FormControls& controls, SettingsStore& store, StationNetwork& network,
                           MapMarks& marks, MarkDrag& drag, std::function<void()> onSelected)
    : controls_(controls),
      store_(store),
      network_(network),
      marks_(marks),
      drag_(drag),
      onSelected_(std::move(onSelected)) {}

void MarkCommands::Start() {
    BindMouse(0, controls_.Mark("Picture6"));
    for (std::int16_t row = 1; row <= C_NUMBEROFMAPPERS; ++row)
        BindMouse(row, *network_.mappers[row].Picture7);
    BindRowEntry("cmdSelect", &MarkCommands::cmdSelect_Click);
    BindRowEntry("cmdConnect", &MarkCommands::cmdConnect_Click);
    BindRowEntry("cmdDisconnect", &MarkCommands::cmdDisconnect_Click);
    BindEntry("cmdWhoIs", &MarkCommands::cmdWhoIs_Click);
    BindRowEntry("cmdDelete", &MarkCommands::cmdDelete_Click);
    BindRowEntry("cmdResetCnt", &MarkCommands::cmdResetCnt_Click);
    BindEntry("cmdResetTotalCnt", &MarkCommands::cmdResetTotalCnt_Click);
    BindEntry("cmdClearPicSync", &MarkCommands::cmdClearPicSync_Click);
    BindRowEntry("cmdResetCorr", &MarkCommands::cmdResetCorr_Click);
}

/// A mark is clicked or dragged; the place of a drop is one on the map. That of the local station has no
/// commands.
void MarkCommands::BindMouse(std::int16_t row, Marker& mark) {
    mark.OnMouse = [this, row](const MouseEvent& event) {
        switch (event.action) {
            case MouseAction::Down:
                return drag_.Take(row);
            case MouseAction::Drop:
                return drag_.Drop(row, event.x, event.y);
            case MouseAction::Up:
                drag_.LetGo();
                if (row != 0) Picture7_MouseUp(row, event);
                return;
            default:
                return;
        }
    };
}

void MarkCommands::BindEntry(std::string_view entry, void (MarkCommands::*action)()) {
    controls_.Push(entry).OnClick = [this, action](MouseButton) { (this->*action)(); };
}

void MarkCommands::BindRowEntry(std::string_view entry, void (MarkCommands::*action)()) {
    controls_.Push(entry).OnClick = [this, action](MouseButton) {
        if (iCursor_ != 0) (this->*action)();
    };
}

void MarkCommands::Picture7_MouseUp(std::int16_t row, const MouseEvent& event) {
    iPreviousCursor_ = std::exchange(iCursor_, row);
    if (event.button != MouseButton::Right) return cmdSelect_Click();
    const Marker& mark = *CursorRow().Picture7;
    controls_.PopUp("mnuPopUp").PopUp(mark.Left() + event.x, mark.Top() + event.y);
}

void MarkCommands::cmdSelect_Click() {
    Selection& selection = network_.selection;
    selection.MapperIndex = iCursor_;
    selection.ClientIndex = network_.client.FindClientSocket(iCursor_);
    store_.SaveSetting("Setting", "MapperIndex", std::to_string(iCursor_));
    onSelected_();
}

void MarkCommands::cmdConnect_Click() {
    ConnectTo(iCursor_);
}

void MarkCommands::ConnectTo(std::int16_t row) {
    Selection& selection = network_.selection;
    selection.MapperIndex = row;
    selection.ClientIndex = network_.client.GetClientSocket(iPreviousCursor_);
    // A change of the box like any other: saved, and the row's sockets connect anew.
    TextBox& txtRemoteHost = controls_.Text("txtRemoteHost");
    const std::string& address = network_.mappers[row].sIP;
    if (txtRemoteHost.Text() != address) txtRemoteHost.Enter(address);
    network_.client.ConnectSelected();
    onSelected_();
}

void MarkCommands::cmdDisconnect_Click() {
    for (int i = 0; i < ClientSockets; ++i) {
        Socket& socket = *network_.sockets.sckClient[static_cast<std::size_t>(i)];
        if (socket.Tag.empty() || RowOfTag(socket.Tag) != iCursor_) continue;
        socket.Tag.clear();  // so that it is not connected again
        network_.client.sckClient_Close(i);
        CursorRow().Picture7->SetBackColor(GreyBase);
    }
}

void MarkCommands::cmdWhoIs_Click() {
    const bool visible = !controls_.Caption(WhoIsLabels[0]).Visible();
    for (const std::string_view label : WhoIsLabels) controls_.Caption(label).SetVisible(visible);
    marks_.ShowStationInfo(iCursor_);
}

void MarkCommands::cmdDelete_Click() {
    cmdDisconnect_Click();
    ClassMapper& row = CursorRow();
    row.Longitude = 0;
    row.Latitude = 0;
    row.RemoteX = 0;
    row.sIP.clear();
    row.Picture7->SetVisible(false);
    network_.list.StationListSave();
    iCursor_ = iPreviousCursor_;
    onSelected_();
}

void MarkCommands::cmdResetCnt_Click() {
    ClassMapper& row = CursorRow();
    row.Corr.lRemoteSampleCount = 0;
    row.Corr.lLocalSampleCount = 0;
    row.Corr.lCorrelatedCount = 0;
    row.lCorrelatedPlottedCount = 0;
}

void MarkCommands::cmdClearPicSync_Click() {
    controls_.Picture(ElementName("PicSync", network_.selection.ClientIndex)).surface.Cls();
}

void MarkCommands::cmdResetCorr_Click() {
    CursorRow().Corr.Clear();
    const int display = network_.client.FindClientSocket(iCursor_);
    for (const std::string_view label : CorrelatorLabels)
        controls_.Caption(ElementName(label, display)).SetCaption("");
}

}  // namespace veltrix
