#pragma once
// A map as two files: the picture, and beside it what part of the Earth it shows.

#include <string>
#include <string_view>

#include "cartography/map_limits.h"
#include "common/bitmap.h"
#include "platform/files.h"

namespace veltrix {

/// The name of the geometry file of a map: its last three characters replaced by "dat". Empty for a name of
/// three characters or fewer, which has none.
std::string GeometryName(std::string_view map);

/// Reads a geometry file. A line that begins with "Ra", "Lo" or "La" and has a colon behind gives the radius,
/// the longitude or the latitude, from the first colon on; the last such line counts, all others are passed
/// over. What no line gives, and all when there is no such file, is as in MapPlace. Raises what Files raises
/// for a file that cannot be read.
MapPlace ReadGeometry(Files& files, std::string_view name);

/// Writes a map and its geometry file. Raises what Files raises. REQUIRES a name of more than three
/// characters.
void WriteMap(Files& files, std::string_view name, const MapPlace& place, const Bitmap& map);

}  // namespace veltrix
