// A calibration table, with whatever a user's editor has left in it.

#include "location/direction_table.h"

#include <cmath>

#include "common/failure.h"
#include "fuzz_input.h"
#include "support/memory_files.h"

using namespace veltrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ManualClock clock;
    MemoryFiles files(clock);
    files.MakeFolder("pSD");
    files.Put("pSDzz.dat", std::string(InputText(data, size)));
    DirectionTable table(files);
    std::string pSDdat = "pSDzz.dat";
    table.Init(5.12345, 52.67890, pSDdat);
    MustHold(pSDdat == ".\\pSD\\pSD1234567890.dat" && table.Count() >= 0 &&
             table.Count() <= DirectionTable::Slots);
    for (float angle = -90; angle <= 450; angle += 7.5F) MustHold(std::isfinite(table.DestinToSource(angle)));

    // What was written is read back.
    table.pSD_Backup("first.dat");
    table.pSD_Restore("first.dat");
    table.pSD_Backup("second.dat");
    table.pSD_Restore("second.dat");
    table.bSDDirty = true;
    table.Save("third.dat");
    const auto lines = static_cast<std::size_t>(table.Count());
    MustHold(files.ReadLines("first.dat").size() == lines &&
             files.Content("second.dat") == files.Content("third.dat"));
    try {
        table.UpdatepSD(100, 0, -10, 0);
    } catch (const Failure& failure) {
        MustHold(failure.Number() == errors::Overflow);
    }
    return 0;
}
