// The trail of the polar display as the last run, or somebody else, has left it.

#include "display/polar_display.h"
#include "fuzz_input.h"
#include "support/memory_files.h"
#include "support/plain_glyphs.h"
#include "support/recording_errors.h"

using namespace veltrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ManualClock clock;
    MemoryFiles files(clock);
    RecordingErrors errors;
    PlainGlyphs glyphs;
    Surface picture(99, 99, glyphs, {0, 0, 99, 99});
    Surface clean(99, 99, glyphs, {0, 0, 99, 99});
    PolarDisplay polar(picture, clean, errors);
    files.Put("pXY.dat", std::string(InputText(data, size)));
    polar.Load(files);
    polar.RenewBackground();
    polar.GyrelUpdate(45, -50, -100, 0, Yellow);
    polar.Save(files);
    MustHold(errors.reports.empty() && files.ReadLines("pXY.dat").size() == PolarDisplay::Slots);
    return 0;
}
