// The fix ring as the last run, or somebody else, has left it.

#include "location/recent_data.h"

#include <algorithm>
#include <cmath>

#include "fuzz_input.h"
#include "location/class_mapper.h"
#include "support/memory_files.h"

using namespace veltrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ManualClock clock;
    MemoryFiles files(clock);
    files.Put("pMA.dat", std::string(InputText(data, size)));
    RecentData ring;
    ring.LoadpMA(files, 0);
    MustHold(ring.iRecentHead >= 0 && ring.iRecentHead < RecentData::Length);
    ring.SavepMA(files);
    const std::string saved = files.Content("pMA.dat");
    MustHold(std::ranges::count(saved, '\n') == RecentData::Length + 1);

    // What was taken over stays, but for what the masks round off.
    RecentData later;
    later.LoadpMA(files, 0);
    MustHold(later.iRecentHead == ring.iRecentHead);
    for (int slot = 0; slot < RecentData::Length; ++slot) {
        const RecentFix& before = ring.Slot(slot);
        const RecentFix& after = later.Slot(slot);
        MustHold(before.iRecentMapper >= 0 && before.iRecentMapper <= C_NUMBEROFMAPPERS);
        MustHold(after.bRecentValid == before.bRecentValid && after.iRecentMapper == before.iRecentMapper);
        MustHold(std::abs(after.dRecentDirLocal - before.dRecentDirLocal) < 0.0051 &&
                 std::abs(after.dRecentDirRemote - before.dRecentDirRemote) < 0.0051 &&
                 std::abs(after.dRecentTime - before.dRecentTime) < 0.51e-6);
    }
    return 0;
}
