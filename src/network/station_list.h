#pragma once
// The station list: what the network knows of itself, rows 1 to 100 of the Mappers.

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "location/class_mapper.h"
#include "network/station_list_file.h"
#include "platform/clock.h"
#include "platform/controls.h"
#include "platform/error_convention.h"

namespace veltrix {

/// The row that no station has: nothing was found, or nothing can be taken.
inline constexpr std::int16_t NoRow = -1;

/// Identity, merge and look-up. Rows are filled by the user, who edits the file, and by the network: what
/// sends a valid greeting is merged in. Nothing frees a row by age. Owned by the form.
class StationList {
  public:
    /// What it works with. REQUIRES that all of it outlives this object.
    struct Parts {
        Mappers& mappers;
        Clock& clock;
        ErrorReporter& errors;
        ListBox& cmbRemoteHost;
        CheckBox& optStationListUpdate;
    };

    StationList(const Parts& parts, Files& files);

    /// Reads "StationList.dat", under the error convention.
    void StationListGet();
    /// Writes it, likewise. What the user has edited meanwhile is read first, and wins.
    void StationListSave();
    /// Reads what the user has edited in the file, if there is anything, and tells of it.
    void TakeEdits();
    /// Fills `cmbRemoteHost` with the names of all rows; those of rows not in use are empty, so that the
    /// index of an entry and 1 is its row. The entry that was chosen stays so.
    void StationListTo();

    /// True for a number that a row of the list can have.
    static bool StationListIndexValid(std::int16_t MapperIdx) {
        return 1 <= MapperIdx && MapperIdx <= C_NUMBEROFMAPPERS;
    }

    /// The merge. `pW` holds name, longitude and latitude as texts in elements 1 to 3. A station that is
    /// known has its row updated, a new one takes the first free row; the changed list is saved where the
    /// user allows it. Returns the row, also of a station whose position is none and whose row is free again
    /// once the list is read; NoRow for a name or an address that cannot be listed, and when no row is free.
    std::int16_t StationListUpdateRemote(std::span<const std::string> pW, const std::string& sIP,
                                         const std::string& sLocalIP);

    /// True when row `Idx` is in use and has the name, the address or exactly the position.
    bool IsStation(std::int16_t Idx, std::string_view sRemoteName, std::string_view sIP, double sLongitude,
                   double sLatitude);
    /// Gives a row what its station says of itself, and the present time as its last sign of life. A host
    /// name is never overwritten as address. Returns whether anything changed.
    bool UpdateStation(std::int16_t Idx, const std::string& sRemoteName, const std::string& sIP,
                       double sLongitude, double sLatitude);

    /// True when the row, in use or not, has this address.
    bool KnownIP(std::int16_t Idx, std::string_view sIP);
    bool KnownStation(std::string_view sIP) { return StationGet(sIP) != 0; }
    /// The lowest row with this address, 0 if there is none.
    std::int16_t StationGet(std::string_view sIP);
    /// The lowest row that IsStation(), or NoRow.
    std::int16_t RowOf(std::string_view sRemoteName, std::string_view sIP, double sLongitude,
                       double sLatitude);

    /// All rows, and the local station as number 0.
    Mappers& Rows() { return parts_.mappers; }
    /// A sign of life of the row's station.
    void Heard(std::int16_t row) { parts_.mappers[row].dLastHeared = parts_.clock.Now(); }

    /// The position of a row has changed, or the name of its calibration table, on which its calibration
    /// depends. May be empty.
    std::function<void(std::int16_t Idx)> OnMoved;
    /// Rows were filled: what they hold as their places on the map are longitudes. May be empty.
    std::function<void()> OnFilled;
    /// What the user has edited was read out of turn. May be empty.
    std::function<void()> OnEdited;

  private:
    void Tell(const std::function<void()>& listener) {
        if (listener) listener();
    }
    std::int16_t FirstFreeRow();
    bool TakeAddress(ClassMapper& row, const std::string& sIP);
    bool TakePosition(std::int16_t Idx, double ClassMapper::*coordinate, double value);

    Parts parts_;
    StationListFile file_;
};

}  // namespace veltrix
