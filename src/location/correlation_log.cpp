#include "location/correlation_log.h"

#include "common/neutral_text.h"

namespace veltrix {

void LogPair(Files& files, Clock& clock, const std::string& sLocalName, const CorrelatedPair& pair) {
    const DateTime now = clock.Now();
    std::string line;
    // The last field is followed by a separator, too.
    for (const std::string& field :
         {FormatDate(now, "YYYY-MM-DD HH:MM:SS"), FormatNeutral(pair.dDirLocal, "000.0"),
          FormatNeutral(pair.dDirRemote, "000.0"), FormatNeutral(pair.dDirLocal - pair.dDirRemote, "000.0"),
          GeneralNumber(pair.dDiffTime), GeneralNumber(pair.lmY), GeneralNumber(pair.dTravelTime),
          GeneralNumber(pair.dLocalTime), GeneralNumber(pair.dRemoteTime)})
        line += field + ", ";
    files.AppendLine("Data\\Corr_" + FormatDate(now, "YYYYMMDD ") + sLocalName + ".csv", line);
}

}  // namespace veltrix
