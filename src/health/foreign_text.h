#pragma once
// Texts of others, from the network or a file, on their way to a file of ours.

#include <string>
#include <string_view>

namespace veltrix {

/// `text` as valid UTF-8 on one line: "?" in place of each control character and of each byte that belongs to
/// no character.
std::string CleanUtf8(std::string_view text);

}  // namespace veltrix
