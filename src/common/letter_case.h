#pragma once
// The case of letters, of A to Z alone and whatever the computer's language: what names are compared by.

#include <algorithm>
#include <string>
#include <string_view>

namespace veltrix {

/// In lower case: the letters of ASCII only; every other byte stays.
constexpr char LowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// A whole text in lower case, likewise.
inline std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = LowerCase(c);
    return lower;
}

/// True when the texts differ in the case of letters at most.
constexpr bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, [](char x, char y) { return LowerCase(x) == LowerCase(y); });
}

}  // namespace veltrix
