#include "storm/station_report.h"

#include <charconv>
#include <optional>

#include "common/failure.h"
#include "common/pieces.h"
#include "common/trimmed.h"

namespace veltrix {

namespace {

/// One line while it is taken apart.
class Line {
  public:
    Line(std::string_view line, std::string place, const LocalClock& clock)
        : fields_(PiecesOf(line, ",")), place_(std::move(place)), clock_(clock) {}

    std::string_view Text(std::size_t field) const {
        if (field >= fields_.size()) Refuse("is too short");
        return Trimmed(fields_[field]);
    }
    double Number(std::size_t field) const {
        const std::string_view text = Text(field);
        double value = 0;
        const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
        if (read.ec != std::errc() || read.ptr != text.data() + text.size())
            Refuse("'" + std::string(text) + "' is no number");
        return value;
    }
    DetectionLine Detection(std::size_t sampleField) const {
        const std::optional<UtcTime> local = ParseUtc(Text(0));
        if (!local) Refuse("'" + std::string(Text(0)) + "' is no date and time");
        return {clock_(*local), Number(sampleField)};
    }

  private:
    [[noreturn]] void Refuse(const std::string& why) const {
        throw Failure(errors::InvalidCall, place_ + ": " + why, "storm");
    }

    std::vector<std::string_view> fields_;
    std::string place_;
    const LocalClock& clock_;
};

/// What `take` makes of each line that begins with `head`, which is cut off.
template <typename Take>
auto LinesOf(const ReportText& text, const LocalClock& clock, std::string_view head, Take&& take) {
    std::vector<decltype(take(std::declval<const Line&>()))> lines;
    std::size_t number = 0;
    std::string_view rest = text.content;
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n');
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        ++number;
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line.empty() || !line.starts_with(head)) continue;
        std::string place = std::string(text.name) + ":" + std::to_string(number);
        lines.push_back(take(Line(line.substr(head.size()), std::move(place), clock)));
    }
    return lines;
}

}  // namespace

std::vector<DetectionLine> ReadStrikeLog(const ReportText& text, const LocalClock& clock) {
    return LinesOf(text, clock, "", [](const Line& line) { return line.Detection(2); });
}

std::vector<PairLine> ReadCorrelationLog(const ReportText& text, const LocalClock& clock) {
    return LinesOf(text, clock, "", [](const Line& line) {
        return PairLine{line.Detection(7), line.Number(8)};
    });
}

std::vector<ReportedFix> ReadFixes(const ReportText& text, const LocalClock& clock) {
    return LinesOf(text, clock, "fix ", [](const Line& line) {
        return ReportedFix{line.Detection(3), line.Number(1), line.Number(2), std::string(line.Text(4))};
    });
}

}  // namespace veltrix
