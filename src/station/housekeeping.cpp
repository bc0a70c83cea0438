#include "station/housekeeping.h"

#include <cmath>
#include <utility>

#include "common/calc_angles.h"
#include "common/letter_case.h"
#include "common/neutral_text.h"
#include "location/mod_calc_globe.h"

namespace veltrix {

namespace {

constexpr int TickMilliseconds = 1000;
constexpr std::int16_t TicksPerMinute = 60;
constexpr double SamplesPerMillisecond = 22;  // deliberately not 22.05
constexpr std::string_view AngleMask = "0.0";
constexpr std::string_view ListName = "StationList.dat";
constexpr std::string_view WatchedFiles = "StationList.dat;MAP*.dat;MAP*.bmp";
constexpr std::string_view AddressChangedMark = "routeripchanged.txt";

template <class Job>
void Run(const Job& job) {
    if (job) job();
}

bool IsMapFile(std::string_view name) {
    const std::string_view kind = name.substr(0, 3);
    return EqualIgnoringCase(kind, "MAP") || EqualIgnoringCase(kind, "SAT");
}

}  // namespace

Housekeeping::Housekeeping(FormControls& controls, Platform& platform, StationNetwork& network,
                           std::function<HomeStation()> home)
    : files_(platform.files),
      network_(network),
      home_(std::move(home)),
      lstOnline(controls.List("lstOnline")),
      txtAngleClientServer(controls.Text("txtAngleClientServer")),
      txtAngleServerClient(controls.Text("txtAngleServerClient")),
      stopwatch_(platform.clock),
      Timer3(platform.loop.MakeTimer([this] { Timer3_Timer(); })) {
    Timer3->SetInterval(TickMilliseconds);
}

void Housekeeping::Start() {
    Timer3->SetEnabled(true);
}

void Housekeeping::Stop() {
    Timer3->SetEnabled(false);
}

void Housekeeping::Timer3_Timer() {
    bool bAddressChanged = false;
    SkippingErrors([&] { stopwatch_.Reset(); }, [&] { AngleOnMap(); }, [&] { AngleOnGlobe(); },
                   [&] { network_.ping.PingTick(); },
                   [&] {
                       iMinute_ = static_cast<std::int16_t>((iMinute_ + 1) % TicksPerMinute);
                       if (iMinute_ == 0) Minute();
                   },
                   [&] { bAddressChanged = AddressHasChanged(); });
    if (bAddressChanged) return;
    SkippingErrors([&] { network_.server.ScanNext(); }, [&] { network_.client.ShowState(); },
                   [&] { network_.server.ScanClosing(); }, [&] { network_.client.CloseHeld(); },
                   [&] { network_.server.ScanIgnored(); }, [&] { network_.client.Upkeep(); },
                   [&] {
                       if (iMinute_ == 0 && !network_.client.IsHeld())
                           network_.presence.UpdateStationColors();
                   },
                   [&] { network_.server.Relisten(); }, [&] { network_.link.Upkeep(); },
                   [&] { Run(jobs.Timer5_Timer); });
}

/// The direction from home to the selected station on the flat map.
void Housekeeping::AngleOnMap() {
    ClassMapper& row = network_.Selected();
    const double dX = row.RemoteX - network_.mappers.HomeX;
    const double dY = row.RemoteY - network_.mappers.HomeY;
    if (dX == 0) {
        txtAngleClientServer.SetText("NAN");
        return;
    }
    double angle = CalcAtan2(dY, dX) * 180 / std::acos(-1.0);
    if (angle >= 180) angle -= 180;
    row.dAngleLocalRemote = angle;
    txtAngleClientServer.SetText(FormatNeutral(angle, AngleMask));
}

/// The same at both ends of the great circle, where the map has a geometry.
void Housekeeping::AngleOnGlobe() {
    ClassMapper& local = network_.mappers.Local();
    if (local.MapLongitude == 0 || local.MapLatitude == 0) return;
    ClassMapper& row = network_.Selected();
    const HomeStation home = home_();
    const BearingPair bearings =
        CalcBearings(home.HomeLatitude, home.HomeLongitude, row.Latitude, row.Longitude);
    row.dAngleLocalRemote = bearings.dBearing2;
    local.dAngleLocalRemote = bearings.dBearing1;
    txtAngleClientServer.SetText(FormatNeutral(row.dAngleLocalRemote, AngleMask));
    txtAngleServerClient.SetText(FormatNeutral(local.dAngleLocalRemote, AngleMask));
}

void Housekeeping::Minute() {
    SkippingErrors(
        [&] {
            if (jobs.GetCoarse) network_.mappers.Local().dClock = jobs.GetCoarse() / SamplesPerMillisecond;
        },
        [&] { Run(jobs.ShowClockDrift); }, [&] { Run(jobs.NoiseLogMinute); },
        [&] { Run(jobs.MapUpdatePlot); }, [&] { Run(jobs.PublishMinute); }, [&] { network_.client.Minute(); },
        [&] { OnlineMinute(); }, [&] { TakeChangedFiles(); });
}

void Housekeeping::OnlineMinute() {
    const HomeStation home = home_();
    network_.online.Update(home.sStationName, std::string(OwnAddress),
                           FormatNeutral(home.HomeLongitude, LongitudeMask),
                           FormatNeutral(home.HomeLatitude, LatitudeMask));
    network_.online.Display(lstOnline);
    network_.entries.SendOnlineEntry();
}

/// Takes over what others have written. A failure leaves the names behind it to the next minute.
void Housekeeping::TakeChangedFiles() {
    const std::string MapFilenamePicture4 = network_.Selected().MapFilenamePicture4;
    bool bDrawn = false;
    const auto drawMap = [&] {
        if (!std::exchange(bDrawn, true)) Run(jobs.MapInit);
    };
    for (const std::string& name : files_.List("", WatchedFiles)) {
        if (!files_.HasArchive(name)) continue;
        if (EqualIgnoringCase(name, ListName)) {
            network_.list.StationListGet();  // which has cleared the attribute before it read
            network_.list.StationListTo();
            drawMap();
        }
        if (IsMapFile(name)) {
            if (EqualIgnoringCase(name, MapFilenamePicture4)) drawMap();
            files_.ClearArchive(name);
        }
    }
}

/// The router has another public address: all connections end, and come back in the next ticks.
bool Housekeeping::AddressHasChanged() {
    if (!files_.Exists(AddressChangedMark)) return false;
    network_.server.CloseAll();
    network_.client.CloseAll();
    SkippingErrors([&] { files_.Delete(AddressChangedMark); });
    return true;
}

}  // namespace veltrix
