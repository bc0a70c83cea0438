#include "detection/strike_log.h"

#include <vector>

#include "common/neutral_text.h"
#include "common/split_by_pattern.h"

namespace veltrix {

namespace {

/// True for what goes wrong in writing to a file that is open already.
bool IsWriteFailure(const Failure& failure) {
    return failure.Number() == errors::DiskFull || failure.Number() == errors::DeviceIo;
}

}  // namespace

std::string StrikeLogLine(const Detection& detection) {
    return GeneralDate(detection.dDate) + ',' + FormatNeutral(detection.dDir, "000.0") + ',' +
           FormatNeutral(detection.dTime, "0000000000") + ',' + FormatNeutral(detection.dAmp, "000.0") + ',' +
           FormatNeutral(detection.lTickTime, "000000000");
}

void StrikeLog::FileUpdate(const Detection& detection, std::string_view) {
    UnderErrorConvention(errors_, "FileUpdate", [&] {
        const std::string name = "Data\\" + FormatDate(clock_.Now(), "YYYYMMDD") + "N.csv";
        try {
            files_.AppendLine(name, StrikeLogLine(detection));
        } catch (const Failure& failure) {
            if (IsWriteFailure(failure)) throw;
        }
    });
}

void StrikeLog::ReplayTodayLog(std::string_view folder, const AmplitudeLimits& limits,
                               StrikeDisplays& displays) {
    std::vector<std::string> lines;
    UnderErrorConvention(errors_, "ReplayTodayLog", [&] {
        const std::string name = FormatDate(clock_.Now(), "YYYYMMDD") + "N.csv";
        lines = files_.ReadLines(folder.empty() ? name : std::string(folder) + '\\' + name);
    });
    for (const std::string& line : lines) {
        const bool goesOn = UnderErrorConvention(errors_, "ReplayTodayLog", [&] {
            PatternFields token = SplitByPattern(line, "*,*,*,*,*");
            const DateTime date = ParseStamp(token.field[0]);
            displays.UpdateDisplay(date, ValNeutral(token.field[1]), ValNeutral(token.field[3]), limits);
        });
        if (!goesOn) return;
    }
}

}  // namespace veltrix
