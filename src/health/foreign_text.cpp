#include "health/foreign_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace veltrix {

namespace {

/// Bytes of the character at the start of `text`, by RFC 3629; 0 when there is none.
std::size_t CharacterLength(std::string_view text) {
    const auto byte = [text](std::size_t i) -> std::uint32_t { return static_cast<unsigned char>(text[i]); };
    const std::uint32_t first = byte(0);
    if (first < 0x80) return 1;
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < length) return 0;
    std::uint32_t code = first & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return 0;
        code = (code << 6) | (byte(i) & 0x3F);
    }
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    const std::uint32_t least = length == 4 ? 0x10000 : length == 3 ? 0x800 : 0x80;
    const bool isControl = code < 0xA0;  // those of C1
    return isSurrogate || isControl || code < least || code > 0x10FFFF ? 0 : length;
}

}  // namespace

std::string CleanUtf8(std::string_view text) {
    std::string clean;
    clean.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        const auto first = static_cast<unsigned char>(text.front());
        const bool isControl = first < 0x20 || first == 0x7F;
        if (length == 0 || isControl) {
            clean += '?';
        } else {
            clean += text.substr(0, length);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return clean;
}

}  // namespace veltrix
