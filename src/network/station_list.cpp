#include "network/station_list.h"

#include <utility>
#include <vector>

#include "common/letter_case.h"
#include "common/neutral_text.h"
#include "common/replace_first.h"
#include "common/trimmed.h"
#include "network/station_record.h"

namespace veltrix {

namespace {

/// The name of a station whose user has not given it one.
constexpr std::string_view Nameless = "New Station";

bool SameName(std::string_view one, std::string_view other) {
    return EqualIgnoringCase(Trimmed(one), Trimmed(other));
}

/// A row's description in a note.
std::string Description(std::string_view name, std::string_view address, double longitude, double latitude) {
    return std::string(name) + " " + std::string(address) + " " + GeneralNumber(longitude) + " " +
           GeneralNumber(latitude);
}

}  // namespace

StationList::StationList(const Parts& parts, Files& files)
    : parts_(parts), file_(parts.mappers, files, parts.clock, parts.errors) {}

void StationList::StationListGet() {
    file_.StationListGet([this](std::int16_t row) {
        if (OnMoved) OnMoved(row);
    });
    Tell(OnFilled);
}

void StationList::StationListTo() {
    std::vector<std::string> names;
    for (int row = 1; row <= C_NUMBEROFMAPPERS; ++row) names.push_back(parts_.mappers[row].sRemoteName);
    ListBox& combo = parts_.cmbRemoteHost;
    if (names == combo.Entries()) return;
    const int chosen = combo.ListIndex();
    combo.SetEntries(std::move(names));
    combo.SetListIndex(chosen);
}

void StationList::TakeEdits() {
    if (!file_.IsEdited()) return;
    StationListGet();
    StationListTo();
    Tell(OnEdited);
}

void StationList::StationListSave() {
    TakeEdits();
    file_.StationListSave();
}

std::int16_t StationList::StationListUpdateRemote(std::span<const std::string> pW, const std::string& sIP,
                                                  const std::string& sLocalIP) {
    const double dLatitude = ValNeutral(pW[3]);
    const double dLongitude = ValNeutral(pW[2]);
    const std::string name = ReplaceFirst(ReplaceFirst(pW[1], ",", " "), ";", " ");
    if (SameName(name, Nameless) || !IsNameListable(name)) return NoRow;
    if (sLocalIP == sIP) return NoRow;  // the local station does not list itself
    if (!IsValidIPv4(sIP)) return NoRow;

    TakeEdits();
    std::int16_t row = RowOf(name, sIP, dLongitude, dLatitude);
    const bool bNew = row == NoRow;
    if (bNew) row = FirstFreeRow();
    if (row == NoRow) return NoRow;
    if (bNew) parts_.mappers[row].pSDdat.clear();  // that of a station that was here before
    const bool bChanged = UpdateStation(row, name, sIP, dLongitude, dLatitude);
    if (bNew) {
        parts_.mappers[row].RemoteX = dLongitude;
        Tell(OnFilled);
    }
    // Without the user's leave the change lasts until the file is read again.
    if (!parts_.optStationListUpdate.Checked()) return row;
    if (!bChanged && !bNew) return row;
    parts_.errors.LogNote("StationListUpdateRemote: " + std::to_string(row) + " " +
                          Description(name, sIP, dLongitude, dLatitude) + (bChanged ? " True" : " False"));
    StationListSave();
    StationListGet();
    StationListTo();
    return row;
}

std::int16_t StationList::RowOf(std::string_view sRemoteName, std::string_view sIP, double sLongitude,
                                double sLatitude) {
    for (std::int16_t row = 1; row <= C_NUMBEROFMAPPERS; ++row)
        if (IsStation(row, sRemoteName, sIP, sLongitude, sLatitude)) return row;
    return NoRow;
}

std::int16_t StationList::FirstFreeRow() {
    for (std::int16_t row = 1; row <= C_NUMBEROFMAPPERS; ++row)
        if (!parts_.mappers[row].MapperActive()) return row;
    return NoRow;
}

bool StationList::IsStation(std::int16_t Idx, std::string_view sRemoteName, std::string_view sIP,
                            double sLongitude, double sLatitude) {
    const ClassMapper& row = parts_.mappers[Idx];
    const std::string_view address = Trimmed(sIP);
    return row.MapperActive() &&
           (SameName(sRemoteName, row.sRemoteName) || address == row.sIP || address == row.sRemoteIP ||
            (sLongitude == row.Longitude && sLatitude == row.Latitude));
}

bool StationList::UpdateStation(std::int16_t Idx, const std::string& sRemoteName, const std::string& sIP,
                                double sLongitude, double sLatitude) {
    ClassMapper& row = parts_.mappers[Idx];
    const std::string before =
        Description(row.sRemoteName, row.sIP, row.Longitude, row.Latitude) + " " + std::string(row.sRemoteIP);
    bool bChanged = TakeAddress(row, sIP);
    if (!SameName(sRemoteName, row.sRemoteName)) {
        row.sRemoteName = Trimmed(sRemoteName);
        bChanged = true;
    }
    bChanged = TakePosition(Idx, &ClassMapper::Longitude, sLongitude) || bChanged;
    bChanged = TakePosition(Idx, &ClassMapper::Latitude, sLatitude) || bChanged;
    if (bChanged) {
        row.RemoteX = row.Longitude;
        Tell(OnFilled);
        const std::string label = "UpdateStation: " + std::to_string(Idx) + " ";
        parts_.errors.LogNote(label + before);
        parts_.errors.LogNote(label + Description(sRemoteName, sIP, sLongitude, sLatitude));
    }
    Heard(Idx);
    return bChanged;
}

bool StationList::TakeAddress(ClassMapper& row, const std::string& sIP) {
    if (sIP == row.sIP) return false;
    if (IsAddressNumeric(row.sIP)) {
        row.sIP = sIP;
        row.sRemoteIP.clear();
        return true;
    }
    return std::exchange(row.sRemoteIP, sIP) != sIP;
}

bool StationList::TakePosition(std::int16_t Idx, double ClassMapper::*coordinate, double value) {
    if (std::exchange(parts_.mappers[Idx].*coordinate, value) == value) return false;
    if (OnMoved) OnMoved(Idx);
    return true;
}

bool StationList::KnownIP(std::int16_t Idx, std::string_view sIP) {
    const ClassMapper& row = parts_.mappers[Idx];
    const std::string_view address = Trimmed(sIP);
    return address == Trimmed(row.sIP) || address == Trimmed(row.sRemoteIP);
}

std::int16_t StationList::StationGet(std::string_view sIP) {
    for (std::int16_t row = 1; row <= C_NUMBEROFMAPPERS; ++row)
        if (KnownIP(row, sIP)) return row;
    return 0;
}

}  // namespace veltrix
