#include "replay_options.h"

#include <algorithm>
#include <thread>

#include "common/failure.h"
#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr unsigned MostUsualThreads = 16;
constexpr int MostThreads = 64;

}  // namespace

bool TakeReplayOption(Arguments& arguments, ReplayRules& rules) {
    const std::string name = arguments.Name();
    if (name == "--threshold") {
        rules.threshold = static_cast<std::int16_t>(arguments.Whole(1, 100));
    } else if (name == "--no-filter") {
        rules.filter = false;
    } else if (name == "--cw-ccw") {
        rules.antenna.bInvertNS = true;
    } else if (name == "--add90") {
        rules.antenna.bAdd90 = true;
    } else if (name == "--sub90") {
        rules.antenna.bSub90 = true;
    } else if (name == "--start") {
        const std::string text = arguments.Value();
        std::string stamp = text;
        try {
            rules.start = ParseStamp(stamp);
        } catch (const Failure&) {
            throw WrongUse{"--start takes YYYY/MM/DD HH:MM:SS, not '" + text + "'"};
        }
    } else if (name == "--threads") {
        rules.threads = static_cast<unsigned>(arguments.Whole(1, MostThreads));
    } else {
        return false;
    }
    return true;
}

unsigned UsualThreads() {
    return std::clamp(std::thread::hardware_concurrency(), 1U, MostUsualThreads);
}

}  // namespace veltrix
