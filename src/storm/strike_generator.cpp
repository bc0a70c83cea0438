#include "storm/strike_generator.h"

#include <GeographicLib/Geodesic.hpp>
#include <algorithm>
#include <cmath>
#include <tuple>

#include "storm/hash_random.h"

namespace veltrix {

namespace {

// What a key is for, so that counts and strikes of a second are independent of each other.
enum Purpose : std::uint64_t { ForCount = 1, ForStrike = 2 };

std::int64_t FloorDivide(std::int64_t a, std::int64_t b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

}  // namespace

StrikeGenerator::StrikeGenerator(const Scenario& scenario) : scenario_(scenario) {
    for (const StormCell& cell : scenario.cells) expMinusMean_.push_back(std::exp(-cell.rate / 60));
}

std::vector<Strike> StrikeGenerator::Between(UtcTime from, UtcTime to) const {
    std::vector<Strike> strikes;
    from = std::max(from, scenario_.start);
    if (from >= to) return strikes;
    const std::int64_t first = FloorDivide(from - scenario_.start, NanosecondsPerSecond);
    const std::int64_t last = FloorDivide(to - 1 - scenario_.start, NanosecondsPerSecond);
    for (std::int64_t second = first; second <= last; ++second)
        for (std::size_t cell = 0; cell < scenario_.cells.size(); ++cell) AppendSecond(cell, second, strikes);
    std::erase_if(strikes,
                  [from, to](const Strike& strike) { return strike.time < from || strike.time >= to; });
    std::ranges::sort(strikes, {}, [](const Strike& s) { return std::tuple(s.time, s.cell, s.latitude); });
    return strikes;
}

/// Poisson count by the product of uniform numbers (Knuth, The Art of Computer Programming, 3.4.1).
void StrikeGenerator::AppendSecond(std::size_t cell, std::int64_t second,
                                   std::vector<Strike>& strikes) const {
    HashRandom counts(MixedKey(scenario_.seed, ForCount, cell, second));
    double product = counts.Uniform();
    for (std::uint64_t i = 0; product > expMinusMean_[cell]; ++i) {
        strikes.push_back(Draw(cell, second, MixedKey(scenario_.seed, ForStrike, cell, second, i)));
        product *= counts.Uniform();
    }
}

Strike StrikeGenerator::Draw(std::size_t index, std::int64_t second, std::uint64_t key) const {
    const StormCell& cell = scenario_.cells[index];
    HashRandom random(key);
    Strike strike;
    strike.cell = index;
    const double fraction = random.Uniform();
    strike.time = scenario_.start + second * NanosecondsPerSecond + static_cast<std::int64_t>(fraction * 1e9);

    const double hours = std::fmod((static_cast<double>(second) + fraction) / 3600, cell.period);
    const double away = cell.radius * std::sqrt(random.Uniform());
    const double towards = 360 * random.Uniform();
    const GeographicLib::Geodesic& earth = GeographicLib::Geodesic::WGS84();
    double latitude = cell.latitude;
    double longitude = cell.longitude;
    earth.Direct(latitude, longitude, cell.direction, 1000 * cell.speed * hours, latitude, longitude);
    earth.Direct(latitude, longitude, towards, 1000 * away, strike.latitude, strike.longitude);

    strike.strength = cell.strength * std::pow(10, cell.spread * NormalOf(random.Next()).first / 20);
    strike.polarity = (random.Next() & 1) != 0 ? 1 : -1;
    return strike;
}

}  // namespace veltrix
