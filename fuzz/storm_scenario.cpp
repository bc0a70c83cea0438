// A scenario is taken whole or refused in one line.

#include "common/failure.h"
#include "fuzz_input.h"
#include "storm/scenario.h"

using namespace veltrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const Scenario scenario = ParseScenario(InputText(data, size), "input");
        MustHold(!scenario.cells.empty() && !scenario.stations.empty());
        for (const StormStation& station : scenario.stations)
            MustHold(station.latitude >= -90 && station.latitude <= 90 && station.noise >= 0);
    } catch (const Failure& failure) {
        MustHold(failure.Description().find('\n') == std::string::npos);
    }
    return 0;
}
