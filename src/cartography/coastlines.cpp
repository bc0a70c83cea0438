#include "cartography/coastlines.h"

#include <cmath>
#include <string_view>

#include "common/failure.h"

namespace veltrix {

namespace {

constexpr std::string_view Mark = "VXC1";
constexpr double StepsPerDegree = 100;
constexpr std::int64_t MostLon = 18000;
constexpr std::int64_t MostLat = 9000;

/// Takes the bytes apart, from the first to the last.
class Reader {
  public:
    explicit Reader(std::span<const std::byte> data) : rest_(data) {}

    void TakeMark() {
        for (const char c : Mark)
            if (Byte() != static_cast<unsigned char>(c)) throw Damaged();
    }
    std::vector<GridLine> Lines() {
        std::vector<GridLine> lines(Count(1));
        // Each line begins at the end of the line before.
        std::int64_t lon = 0;
        std::int64_t lat = 0;
        for (GridLine& line : lines) {
            line.resize(Count(2));
            if (line.size() < 2) throw Damaged();
            for (GridPoint& point : line) {
                lon += Step();
                lat += Step();
                if (std::abs(lon) > MostLon || std::abs(lat) > MostLat) throw Damaged();
                point = {static_cast<std::int16_t>(lon), static_cast<std::int16_t>(lat)};
            }
        }
        return lines;
    }
    void TakeEnd() const {
        if (!rest_.empty()) throw Damaged();
    }

  private:
    static Failure Damaged() { return {errors::Internal, "The coastlines are damaged", "Coastlines"}; }

    unsigned Byte() {
        if (rest_.empty()) throw Damaged();
        const auto byte = std::to_integer<unsigned>(rest_.front());
        rest_ = rest_.subspan(1);
        return byte;
    }
    std::uint32_t Number() {
        std::uint32_t number = 0;
        for (unsigned shift = 0; shift < 28; shift += 7) {
            const unsigned byte = Byte();
            number |= (byte & 127U) << shift;
            if (byte < 128) return number;
        }
        throw Damaged();
    }
    /// A number of things that take `leastBytes` each, at least, so that they can all be there.
    std::size_t Count(std::size_t leastBytes) {
        const std::size_t count = Number();
        if (count > rest_.size() / leastBytes) throw Damaged();
        return count;
    }
    std::int64_t Step() {
        const std::int64_t number = Number();
        return number % 2 == 0 ? number / 2 : -(number + 1) / 2;
    }

    std::span<const std::byte> rest_;
};

}  // namespace

Coastlines::Coastlines(std::span<const std::byte> data) {
    Reader reader(data);
    reader.TakeMark();
    coasts_ = reader.Lines();
    borders_ = reader.Lines();
    reader.TakeEnd();
}

bool Coastlines::IsLand(double longitude, double latitude) const {
    double lon = std::remainder(longitude, 360) * StepsPerDegree;
    if (lon >= MostLon) lon = -MostLon;
    const double lat = latitude * StepsPerDegree;
    bool isLand = false;
    for (const GridLine& line : coasts_) {
        for (std::size_t i = 1; i < line.size(); ++i) {
            const GridPoint a = line[i - 1];
            const GridPoint b = line[i];
            if ((a.lon <= lon) == (b.lon <= lon)) continue;
            const double part = (lon - a.lon) / (b.lon - a.lon);
            if (a.lat + part * (b.lat - a.lat) > lat) isLand = !isLand;
        }
    }
    return isLand;
}

}  // namespace veltrix
