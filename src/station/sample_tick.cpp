#include "station/sample_tick.h"

#include <utility>

#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr std::int32_t LongBlock = 10000;  // frames; a longer one shows that the station came late

std::string RightAligned(std::int32_t number, std::size_t width) {
    std::string text = std::to_string(number);
    if (text.size() < width) text.insert(0, width - text.size(), ' ');
    return text;
}

}  // namespace

AfterFailure TickFailures::OnFailure(const Failure& failure) {
    if (failure.Number() == lastNumber_) return AfterFailure::LeaveProcedure;
    lastNumber_ = failure.Number();
    return report_.OnFailure(failure);
}

SampleTick::SampleTick(FormControls& controls, Platform& platform, ErrorReporter& errors,
                       PulseDelivery& delivery, NoiseControl& noise, std::string strVersion)
    : sound(platform.clock),
      controls_(controls),
      clock_(platform.clock),
      errors_(errors),
      delivery_(delivery),
      stopwatch_(platform.clock),
      failures_(errors),
      detector_(noise, delivery, [this] { return stopwatch_.ElapsedTime(); }),
      intake_(platform.files),
      strVersion_(std::move(strVersion)) {
    delivery_.Attach(detector_);
}

void SampleTick::Timer1_Timer() {
    if (bRunning) {
        errors_.LogNote("Timer1_Timer() recursion.");
        return;
    }
    bRunning = true;
    ShowCaption(stopwatch_.ElapsedTime());
    stopwatch_.Reset();
    errors_.EnterProcedure("Timer1_Timer");
    lPrevTickClock = std::exchange(lTickClock, clock_.timeGetTime());
    DetectionBroadcaster* const broadcaster = delivery_.consumers.broadcaster;
    const bool toTheEnd = RunSteps(
                              failures_,
                              [&] {
                                  if (broadcaster) broadcaster->CloseStalePing();
                              },
                              [&] { delivery_.CheckStrongest(); }) &&
                          TakeBlock() &&
                          (!broadcaster || RunStep(failures_, [&] { broadcaster->Timer6_Timer(); }));
    if (toTheEnd) {
        bRunning = false;
        errors_.LeaveProcedure("Timer1_Timer");
    } else if (bRunning && !std::exchange(bStandstillTold, true) && OnStandstill) {
        OnStandstill(failures_.LastNumber());
    }
}

void SampleTick::ShowCaption(std::int32_t elapsed) {
    controls_.Form().SetCaption(strVersion_ + " Veltrix - " + GeneralDate(clock_.Now()) + " " +
                                RightAligned(elapsed, 5) + " [-]");
}

/// False when the tick is to be left.
bool SampleTick::TakeBlock() {
    const auto process = [this](std::span<const std::int16_t> samples) {
        sound.Take(samples);
        lSamplesInFile += static_cast<std::int32_t>((samples.size() + 1) / 2);
        return detector_.Process(samples, failures_);
    };
    switch (intake_.Take(
        sAudioFile, [this] { BeginBlock(); }, process)) {
        case BlockIntake::Outcome::NoBlock:
        case BlockIntake::Outcome::Taken:
            return true;
        case BlockIntake::Outcome::CannotOpen:
        case BlockIntake::Outcome::CannotRead:
            bRunning = false;
            return false;
        case BlockIntake::Outcome::Stopped:
            break;
    }
    // Left in the middle of a block by a repeated failure: the recursion flag stays as it stands.
    return false;
}

void SampleTick::BeginBlock() {
    sound.BeginBlock();
    lSamplesInPrevFile = std::exchange(lSamplesInFile, 0);
    const std::int32_t lPrevBlockClock = std::exchange(lBlockClock, lTickClock);
    if (bBlockSeen)
        controls_.Text("Text1").SetText(std::to_string(static_cast<std::uint32_t>(lBlockClock) -
                                                       static_cast<std::uint32_t>(lPrevBlockClock)));
    bBlockSeen = true;
    if (lSamplesInPrevFile > LongBlock)
        controls_.Text("txtSamplesInPrevFile")
            .SetText(GeneralDate(clock_.Now()) + " " + std::to_string(lSamplesInPrevFile));
}

}  // namespace veltrix
