#pragma once
// Texts that are lists: patterns, paths and the like.

#include <algorithm>
#include <string_view>
#include <vector>

namespace veltrix {

/// The pieces of `text` between characters of `separators`, in their order; empty pieces are left out. They
/// are views of `text`.
inline std::vector<std::string_view> PiecesOf(std::string_view text, std::string_view separators) {
    std::vector<std::string_view> pieces;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(separators), text.size());
        if (end > 0) pieces.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return pieces;
}

}  // namespace veltrix
