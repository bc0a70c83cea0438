#pragma once
// Texts of others on a line of ours.

#include <algorithm>
#include <string>

namespace veltrix {

/// `text` with a blank in place of each character that would end the line.
inline std::string OnOneLine(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return text;
}

}  // namespace veltrix
