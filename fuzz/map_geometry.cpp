// A map's geometry file as a user has written it.

#include <cmath>

#include "cartography/map_files.h"
#include "fuzz_input.h"
#include "support/memory_files.h"

using namespace veltrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ManualClock clock;
    MemoryFiles files(clock);
    files.Put("MAP.dat", std::string(InputText(data, size)));
    const MapPlace place = ReadGeometry(files, "MAP.dat");
    MustHold(std::isfinite(place.MapRadius) && std::isfinite(place.MapLongitude));
    WriteMap(files, "MAP.BMP", place, {1, 1, {0}});
    MustHold(ReadGeometry(files, "MAP.dat") == place);
    return 0;
}
