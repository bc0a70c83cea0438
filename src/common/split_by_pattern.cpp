#include "common/split_by_pattern.h"

#include <vector>

#include "common/pieces.h"

namespace veltrix {

namespace {

/// Positions of the literals, each at its first occurrence behind the one before; empty when one is not
/// found.
std::vector<std::size_t> FindInTurn(std::string_view text, const std::vector<std::string_view>& literals) {
    std::vector<std::size_t> places;
    std::size_t from = 0;
    for (const std::string_view literal : literals) {
        const std::size_t place = text.find(literal, from);
        if (place == std::string_view::npos) return {};
        places.push_back(place);
        from = place + literal.size();
    }
    return places;
}

}  // namespace

PatternFields SplitByPattern(std::string_view text, std::string_view pattern) {
    PatternFields fields;
    const std::vector<std::string_view> literals = PiecesOf(pattern, "*");
    // When the other literals are not found behind the first place of the first one, no later place has them
    // either.
    const std::vector<std::size_t> places = FindInTurn(text, literals);
    if (places.empty()) return fields;
    fields.matched = true;
    std::size_t next = 0;
    if (pattern.front() == '*' && places.front() > 0) fields.field[next++] = text.substr(0, places.front());
    for (std::size_t i = 0; i + 1 < places.size(); ++i) {
        const std::size_t begin = places[i] + literals[i].size();
        fields.field[next++] = text.substr(begin, places[i + 1] - begin);
    }
    const std::size_t rest = places.back() + literals.back().size();
    if (pattern.back() == '*') fields.field[next] = text.substr(rest);
    return fields;
}

}  // namespace veltrix
