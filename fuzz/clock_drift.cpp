// The record of the sample clock as the last run, or somebody else, has left it.

#include <algorithm>

#include "fuzz_input.h"
#include "support/memory_files.h"
#include "timebase/class_clock_drift.h"

using namespace veltrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int Lines = 1001;
    ManualClock clock;
    MemoryFiles files(clock);
    files.Put("ClockDrift.dat", std::string(InputText(data, size)));
    ClassClockDrift drift(files);
    const double rate = drift.GetCoarse();
    drift.Save();
    const std::string saved = files.Content("ClockDrift.dat");
    MustHold(std::ranges::count(saved, '\n') == Lines);

    ClassClockDrift later(files);
    MustHold(later.GetCoarse() == rate);
    later.Update(46000, 1);
    later.Update(46001, 2);
    later.Save();
    MustHold(std::ranges::count(files.Content("ClockDrift.dat"), '\n') == Lines);
    return 0;
}
