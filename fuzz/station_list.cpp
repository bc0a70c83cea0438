// The file of the station list, with whatever a user's editor has left in it.

#include "network/station_list_file.h"

#include "common/neutral_text.h"
#include "fuzz_input.h"
#include "support/memory_files.h"
#include "support/recording_errors.h"

using namespace veltrix;

namespace {

/// All that a line holds, a row after the other.
std::string Shown(Mappers& mappers) {
    std::string all;
    for (int i = 1; i <= C_NUMBEROFMAPPERS; ++i) {
        const ClassMapper& row = mappers[i];
        for (const std::string& text :
             {row.sLocalName, row.MapFilenamePicture4, row.pSDdat, row.sIP, row.sRemoteName, row.sRemoteIP})
            all += text + "|";
        for (const double number :
             {row.RemoteX, row.MapperActive() ? row.Longitude : 0, row.MapperActive() ? row.Latitude : 0,
              row.dCorrectionAngle, row.dBalance, row.Corr.dPreDrift, row.dLastHeared})
            all += GeneralNumber(number) + "|";
        all += "\n";
    }
    return all;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ManualClock clock;
    MemoryFiles files(clock);
    RecordingErrors errors;
    PreciseNow preciseNow(clock);
    Mappers mappers({clock, preciseNow, files, errors});
    StationListFile list(mappers, files, clock, errors);
    const auto saveAndGet = [&] {
        list.StationListSave();
        const std::string table = files.Content("StationList.dat");
        MustHold(std::ranges::count(table, '\n') == C_NUMBEROFMAPPERS &&
                 std::ranges::count(table, '\r') == 0);
        list.StationListGet([](std::int16_t) {});
    };
    files.Put("StationList.dat", std::string(InputText(data, size)));
    list.StationListGet([](std::int16_t) {});
    const bool isShifted = Shown(mappers).find(';') != std::string::npos;
    saveAndGet();
    const std::string before = Shown(mappers);
    saveAndGet();
    // A text with a separator in it shifts the columns behind it; all else comes back as it was saved.
    MustHold(isShifted || Shown(mappers) == before);
    MustHold(errors.reports.empty());
    return 0;
}
