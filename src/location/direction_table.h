#pragma once
// DirectionTable: the calibration of a station's bearings, the pSD table.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace veltrix {

/// The name of the table file of a station at that place, without its folder. Only the decimals of the
/// coordinates count: longitude 5.12345 and latitude 52.67890 give "pSD1234567890.dat".
std::string pSDFilename(double Longitude, double Latitude);

/// Maps the bearing that a station reports, the destination, to the true one, the source. What surrounds the
/// antennas bends bearings, each direction differently. Bearings are axial here: 0 to 180 degrees stand for
/// the whole circle. Angles are kept as 4-byte floats, as the files hold them.
///
/// One for every ClassMapper. A new table is the identity over all its slots, 0 to 180, of which the last is
/// not counted. After each load that came to its end the points ascend by source. REQUIRES that the files
/// outlive it.
///
/// A file holds a point a line: source angle, ";" and destination angle. "," in place of a missing ";" is
/// read too, and either decimal sign. A line that holds no point, and the twentieth, end the reading: the
/// points before it have replaced those of the identity, in the order of the file, and 18 points count. What
/// cannot be read or written is passed over without a word.
class DirectionTable {
  public:
    /// Points that fit.
    static constexpr int Slots = 19;

    explicit DirectionTable(Files& files);

    /// The true bearing for a reported one, interpolated between the points on both sides, on the side of the
    /// circle on which `sDestin` lies. Argument and result are single precision, what lies between them
    /// double. An empty table gives `sDestin` less the half circle above 180; a bearing that no pair of
    /// points spans gives 0 or 180, whichever is nearer.
    double DestinToSource(float sDestin) const;

    /// Source and destination angle of a slot. Raises OutOfRange for a slot that is not there.
    float CTSource(int slot) const { return PointAt(slot).source; }
    float CTDestion(int slot) const { return PointAt(slot).destination; }
    /// Points that count, from slot 0 on.
    int Count() const { return count_; }

    /// The identity: 18 points, 0 to 170.
    void Clear();
    /// Loads the table of the station at that place, or the identity when it has none. A table that is found
    /// only under the name `pSDdat` moves with the station: it is copied to the name that the place gives,
    /// unless a coordinate is 0. `pSDdat` becomes the name in use. A table of that name in the working folder
    /// gives way to the one in the folder of tables.
    void Init(double Longitude, double Latitude, std::string& pSDdat);
    /// Loads the table of that name, or the identity when it is missing.
    void pSD_Restore(std::string_view pSDFile);
    /// Writes the table under that name.
    void pSD_Backup(std::string_view pSDFile) const;
    /// Writes the table under the name `pSDdat` when it was changed. It still counts as changed then.
    void Save(std::string_view pSDdat) const;

    /// Bends the table by `dCorrectionAngle` degrees around the direction `dCentreAngle`, less and less up to
    /// 90 degrees on either side; then takes the mean of its bend out of it. Returns `dOutputAngle`, the
    /// station's fixed correction, with that mean added. Only points at whole degrees from 0 to 179 bend. The
    /// second argument, an aperture, has no effect. Raises Overflow when the table is empty, or when an angle
    /// leaves the range of a 4-byte float.
    double UpdatepSD(double dCentreAngle, double dApertureAngle, double dCorrectionAngle,
                     double dOutputAngle);

    /// The table differs from its file.
    bool bSDDirty = false;

  private:
    struct Point {
        float source = 0;
        float destination = 0;
    };

    /// A point of the table laid end to end, a half circle higher or lower.
    struct Turned {
        double source = 0;
        double destination = 0;
    };

    const Point& PointAt(int slot) const;
    Turned PointAround(int k) const;
    void Load(std::string_view name);
    void Sort();

    Files& files_;
    std::array<Point, Slots> points_{};
    std::int16_t count_ = Slots - 1;
};

}  // namespace veltrix
