// The coastlines, as a damaged program or somebody else's file would hold them.

#include <span>

#include "cartography/coastlines.h"
#include "common/failure.h"
#include "fuzz_input.h"

using namespace veltrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const Coastlines coastlines(std::as_bytes(std::span(data, size)));
        for (const GridLine& line : coastlines.Coasts()) {
            MustHold(line.size() >= 2);
            for (const GridPoint& point : line) MustHold(point.lon >= -18000 && point.lon <= 18000);
        }
        coastlines.IsLand(0, 0);
    } catch (const Failure& failure) {
        MustHold(failure.Number() == errors::Internal);
    }
    return 0;
}
