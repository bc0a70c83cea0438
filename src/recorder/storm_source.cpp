#include "recorder/storm_source.h"

#include <algorithm>
#include <utility>

namespace veltrix {

StormSource::StormSource(const std::string& scenario, const std::string& station, UtcTime now,
                         std::filesystem::path truth, const Say& say)
    : SampleSource("storm"),
      scenario_(LoadScenario(scenario)),
      station_(scenario_.StationIndex(station)),
      renderer_(scenario_, station_, now),
      pacer_(1 / renderer_.Grid().Period()),
      truth_(scenario_, std::move(truth), renderer_.Time(), say) {
    status_.device = scenario + ", " + Station();
}

std::size_t StormSource::Read(std::span<std::int16_t> samples, Moment now) {
    const auto room = static_cast<std::int64_t>(samples.size() / 2);
    const auto frames = static_cast<std::size_t>(std::clamp<std::int64_t>(pacer_.Due(now), 0, room));
    renderer_.Render(samples.first(2 * frames));
    pacer_.HandOut(frames);
    truth_.Write(renderer_.Time());
    return frames;
}

}  // namespace veltrix
