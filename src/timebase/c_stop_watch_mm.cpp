#include "timebase/c_stop_watch_mm.h"

#include "common/failure.h"

namespace veltrix {

namespace {

constexpr std::int32_t LifelongPeriod = 5;

/// Sum and difference as the counter computes them, wrapping at 32 bits.
std::int32_t Plus(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

std::int32_t Minus(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

void Check(bool good, const char* words, const char* source, CodeLine where = __builtin_LINE()) {
    if (!good) throw Failure(errors::Internal, words, source, where);
}

}  // namespace

CStopWatchMM::CStopWatchMM(Clock& clock) : clock_(clock) {
    const Clock::TimerCaps caps = clock_.timeGetDevCaps();
    lMinPeriod = caps.lMinPeriod;
    lMaxPeriod = caps.lMaxPeriod;
    BeginPeriod(LifelongPeriod);
    Reset();
}

CStopWatchMM::~CStopWatchMM() {
    if (lPeriod != 0) clock_.timeEndPeriod(lPeriod);
}

std::int32_t CStopWatchMM::ElapsedTime() const {
    const std::int32_t now = lRunning != 0 ? clock_.timeGetTime() : 0;
    return Plus(Minus(now, lStart), lAccumulated);
}

void CStopWatchMM::BeginPeriod(std::int32_t period) {
    constexpr const char* Source = "CStopWatchMM.BeginPeriod";
    Check(lPeriod == 0, "Period is already set, EndPeriod call required first", Source);
    Check(period >= lMinPeriod, "Period less than minimum", Source);
    Check(period <= lMaxPeriod, "Period greater than maximum", Source);
    Check(clock_.timeBeginPeriod(period), "Error setting the multimedia timer period", Source);
    lPeriod = period;
}

void CStopWatchMM::EndPeriod(std::int32_t period) {
    constexpr const char* Source = "CStopWatchMM.EndPeriod";
    Check(lPeriod != 0, "Period not set, BeginPeriod call required first", Source);
    Check(lPeriod == period, "Period does not match call to BeginPeriod", Source);
    lPeriod = 0;
    Check(clock_.timeEndPeriod(period), "Error releasing the multimedia timer period", Source);
}

void CStopWatchMM::Reset() {
    lAccumulated = 0;
    lStart = clock_.timeGetTime();
}

void CStopWatchMM::StartTiming() {
    if (lRunning != 0) return;
    lStart = clock_.timeGetTime();
    lRunning = 1;
}

void CStopWatchMM::StopTiming() {
    if (lRunning == 0) return;
    lAccumulated = Plus(lAccumulated, Minus(clock_.timeGetTime(), lStart));
    lStart = 0;
    lRunning = 0;
}

}  // namespace veltrix
