#include "station/recorder_start.h"

#include <utility>

#include "platform/error_convention.h"

namespace veltrix {

namespace {

constexpr int OneSecond = 1000;

}  // namespace

std::vector<std::string> RecorderArguments(const std::string& sPath) {
    std::vector<std::string> arguments = {"/ch=2", "/dt=2", "/gain=1", "/maxsize=128K", "/sr=22050"};
    if (!sPath.empty()) arguments.push_back("/of=" + sPath + "audio.dat");
    return arguments;
}

RecorderStart::RecorderStart(Platform& platform, RecorderChoice choice,
                             std::function<std::string()> ramDrivePath)
    : files_(platform.files),
      processes_(platform.processes),
      loop_(platform.loop),
      choice_(std::move(choice)),
      ramDrivePath_(std::move(ramDrivePath)),
      stopwatch_(platform.clock),
      Timer2(platform.loop.MakeTimer([this] { Timer2_Timer(); })) {}

void RecorderStart::Start() {
    Timer2->SetInterval(OneSecond);
    Timer2->SetEnabled(true);
}

void RecorderStart::Timer2_Timer() {
    stopwatch_.Reset();
    if (std::exchange(bRunning, true)) return;
    const auto remove = [this](std::string_view name) {
        if (files_.Exists(name)) files_.Delete(name);
    };
    SkippingErrors([&] { remove("audio.dat"); }, [&] { remove("audio.tmp"); }, [&] { StartRecorder(); },
                   [&] { Timer2->SetEnabled(false); }, [&] { loop_.Sleep(OneSecond); },
                   // Whatever block stands here now is thrown away.
                   [&] { files_.Delete("audio.dat"); });
    bRunning = false;
}

void RecorderStart::StartRecorder() {
    if (!choice_.command) return;
    std::vector<std::string> arguments(choice_.command->begin() + 1, choice_.command->end());
    for (std::string& argument : RecorderArguments(ramDrivePath_())) arguments.push_back(std::move(argument));
    try {
        processes_.Start(choice_.command->front(), arguments, WindowStyle::MinimizedNoFocus);
    } catch (const Failure& failure) {
        if (OnNoRecorder) OnNoRecorder(failure.Description());
        throw;
    }
}

}  // namespace veltrix
