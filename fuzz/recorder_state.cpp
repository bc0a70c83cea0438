// "SndInput.state" as a recorder, or somebody else, has left it, on its way through to the files of figures.

#include "health/recorder_state.h"

#include <algorithm>
#include <string>

#include "fuzz_input.h"
#include "health/health_json.h"
#include "health/health_prometheus.h"
#include "health/status_texts.h"
#include "support/memory_files.h"

using namespace veltrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ManualClock clock;
    MemoryFiles files(clock);
    RecorderAccountFile file;
    MustHold(!file.Read(files, "SndInput.state", 0));
    files.Put("SndInput.state", std::string(InputText(data, size)));
    HealthReport report;
    report.recorder = file.Read(files, "SndInput.state", 1000);
    MustHold(!report.recorder || size <= RecorderAccountFile::MostBytes);
    if (!report.recorder) return 0;

    const auto isOneLine = [](const std::string& text) {
        return std::ranges::none_of(text, [](unsigned char c) { return c < 0x20; });
    };
    MustHold(isOneLine(report.recorder->device) && isOneLine(report.recorder->since));
    report.station = report.recorder->device;
    // No text makes a line of its own.
    HealthReport plain = report;
    plain.station = plain.recorder->device = plain.recorder->since = plain.recorder->source = "x";
    const auto lines = [](const std::string& text) { return std::ranges::count(text, '\n'); };
    MustHold(lines(HealthJson(report)) == lines(HealthJson(plain)));
    MustHold(lines(HealthPrometheus(report)) == lines(HealthPrometheus(plain)));
    for (const StatusCell& cell : StatusCells(report)) MustHold(isOneLine(cell.toolTip));
    return 0;
}
