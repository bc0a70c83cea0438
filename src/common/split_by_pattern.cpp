#include "common/split_by_pattern.h"

#include <algorithm>
#include <vector>

namespace veltrix {

namespace {

std::vector<std::string_view> LiteralsOf(std::string_view pattern) {
    std::vector<std::string_view> literals;
    while (!pattern.empty()) {
        const std::size_t star = std::min(pattern.find('*'), pattern.size());
        if (star > 0) literals.push_back(pattern.substr(0, star));
        pattern.remove_prefix(std::min(star + 1, pattern.size()));
    }
    return literals;
}

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
    const std::vector<std::string_view> literals = LiteralsOf(pattern);
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
