#pragma once
// "StationList.dat": the station list as a table of 100 lines that users read and edit.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "location/class_mapper.h"
#include "platform/error_convention.h"
#include "platform/files.h"

namespace veltrix {

/// The map of a row that names none.
inline constexpr std::string_view DefaultMap = "MAP_2000.BMP";

/// Reads and writes the rows. Owned by the station list.
class StationListFile {
  public:
    StationListFile(Mappers& mappers, Files& files, Clock& clock, ErrorReporter& errors)
        : mappers_(mappers), files_(files), clock_(clock), errors_(errors) {}

    /// Fills the rows from the file, line after line. A missing file leaves them as they are, and so do the
    /// columns that a line of an older form does not have. A line that reaches to the name and has a bad
    /// position, or the name "0", is a free row. `moved` is told of each row in use whose position or
    /// calibration table is another than before.
    void StationListGet(const std::function<void(std::int16_t row)>& moved);
    /// Writes all rows, in columns as wide as what stands in them. A file that could not be read stays as it
    /// is.
    void StationListSave();
    /// True when somebody else has changed the file since.
    bool IsEdited();

  private:
    void TakeLine(ClassMapper& row, std::string_view line);
    void CheckRow(ClassMapper& row) const;
    std::string Table();

    Mappers& mappers_;
    Files& files_;
    Clock& clock_;
    ErrorReporter& errors_;
    bool bUnread_ = false;  // the last attempt to read the file failed
};

}  // namespace veltrix
