#pragma once
// A station list on files in memory.

#include <gtest/gtest.h>

#include <string>

#include "common/neutral_text.h"
#include "network/station_list.h"
#include "support/memory_files.h"
#include "support/recording_errors.h"

namespace veltrix {

struct ListTest : ::testing::Test {
    ListTest() { update.SetValue(1); }

    /// Fills a row as a greeting would.
    ClassMapper& Fill(std::int16_t row, const std::string& name, const std::string& ip, double longitude,
                      double latitude) {
        ClassMapper& mapper = mappers[row];
        mapper.RemoteX = mapper.Longitude = longitude;
        mapper.Latitude = latitude;
        mapper.sRemoteName = name;
        mapper.sIP = ip;
        return mapper;
    }
    /// A greeting of a station at `ip` reaches us. The local station is at 10.0.0.1.
    std::int16_t Merge(const std::string& name, const std::string& ip, const std::string& longitude,
                       const std::string& latitude) {
        const std::string pW[] = {"", name, longitude, latitude};
        return list.StationListUpdateRemote(pW, ip, "10.0.0.1");
    }
    std::string Table() const { return files.Content("StationList.dat"); }
    std::ptrdiff_t TableLines() const {
        const std::string table = Table();
        return std::ranges::count(table, '\n') + std::ranges::count(table, '\r');
    }
    /// Name, address, seen address and place of a row; "free" for one that is not in use.
    std::string Shown(std::int16_t row) {
        const ClassMapper& m = mappers[row];
        if (!m.MapperActive()) return "free";
        return m.sRemoteName + "|" + m.sIP + "|" + m.sRemoteIP + "|" + GeneralNumber(m.Longitude) + " " +
               GeneralNumber(m.Latitude);
    }

    ManualClock clock;
    MemoryFiles files{clock};
    RecordingErrors errors;
    PreciseNow preciseNow{clock};
    Mappers mappers{{clock, preciseNow, files, errors}};
    ListBox combo{"cmbRemoteHost", ControlKind::Combo};
    CheckBox update{"optStationListUpdate"};
    StationList list{{mappers, clock, errors, combo, update}, files};
};

}  // namespace veltrix
