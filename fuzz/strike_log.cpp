// The strike log of today, replayed with whatever stands in it.

#include "detection/strike_log.h"
#include "common/neutral_text.h"
#include "fuzz_input.h"
#include "support/memory_files.h"
#include "support/recording_errors.h"

using namespace veltrix;

namespace {

struct CountingDisplays final : StrikeDisplays {
    void GyrelUpdate(double, double, const AmplitudeLimits&, ColourValue) override {}
    void UpdateDisplay(DateTime, double, double, const AmplitudeLimits&) override { ++plotted; }
    std::size_t plotted = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ManualClock clock;
    MemoryFiles files(clock);
    RecordingErrors errors;
    CountingDisplays displays;
    const std::string_view text = InputText(data, size);
    files.Put(FormatDate(clock.Now(), "YYYYMMDD") + "N.csv", std::string(text));
    StrikeLog(files, clock, errors).ReplayTodayLog("", {}, displays);
    MustHold(displays.plotted + errors.reports.size() <= text.size());
    return 0;
}
