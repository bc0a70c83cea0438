#pragma once
// A station in the middle of a storm, every figure known.

#include "health/health_report.h"

namespace veltrix {

inline HealthReport SampleReport() {
    HealthReport report;
    report.version = "0.1.0";
    report.station = "Alpha";
    report.time = DateTimeOf({2026, 7, 4, 16, 20, 30});
    report.started = DateTimeOf({2026, 7, 3, 8, 0, 0});
    report.uptime = 116'430;
    report.sound.arriving = true;
    report.sound.since = DateTimeOf({2026, 7, 3, 8, 0, 2});
    report.sound.secondsAgo = 116'428;
    report.sound.blocks = 1'164'275;
    report.sound.frames = 2'567'224'123;
    report.sound.rate = MeasuredRate{22050.312, 1.2251, 3600};
    constexpr std::uint64_t Frames = 1'323'018;
    report.sound.minute = {
        {{{2809, false, 410 * 410 * Frames}, {3669, false, 417 * 417 * Frames}}}, Frames, 3, 0};
    report.sound.clipped = 412;
    report.recorder = RecorderAccount{"recording", "2026-07-03T06:00:01Z", "card", "USB Audio: \"Line\"",
                                      44100,       2'567'225'000,          877};
    report.threshold = {324, -80.01};
    report.noise = {108.2, -89.54};
    report.strikes.minute = 12;
    report.strikes.hour = 634;
    report.strikes.total = 18'231;
    report.pairs.minute = 9;
    report.pairs.hour = 431;
    report.pairs.total = 11'902;
    report.located.minute = 7;
    report.located.hour = 377;
    report.located.total = 10'040;
    report.peers = {{false, 3, "Bravo", "192.0.2.17", 7, "Connected"},
                    {true, 0, "Bravo", "192.0.2.17", 7, "Connected"},
                    {true, 1, "Charlie", "198.51.100.4", 6, "Connecting"}};
    report.published = DateTimeOf({2026, 7, 4, 16, 15, 2});
    report.publishedAgo = 328;
    report.disk = DiskSpace{52'428'800'000, 125'829'120'000};
    report.clockSynchronised = true;
    return report;
}

}  // namespace veltrix
