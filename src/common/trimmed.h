#pragma once
// Text without the blanks around it.

#include <algorithm>
#include <string_view>

namespace veltrix {

/// `text` without the blanks at its ends; tabs and line ends stay. A view of `text`.
constexpr std::string_view Trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    text.remove_suffix(text.size() - (text.find_last_not_of(' ') + 1));
    return text;
}

}  // namespace veltrix
