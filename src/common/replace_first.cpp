#include "common/replace_first.h"

#include <algorithm>

#include "common/letter_case.h"

namespace veltrix {

std::string ReplaceFirst(std::string_view text, std::string_view find, std::string_view with) {
    constexpr std::size_t KeptBehind = 4096;
    const auto found =
        std::ranges::search(text, find, [](char a, char b) { return LowerCase(a) == LowerCase(b); });
    if (find.empty() || found.empty()) return std::string(text);
    std::string result(text.begin(), found.begin());
    result += with;
    const auto behind = static_cast<std::size_t>(text.end() - found.end());
    result.append(found.end(), found.end() + static_cast<std::ptrdiff_t>(std::min(behind, KeptBehind)));
    return result;
}

}  // namespace veltrix
