#include "display/bitmap_file.h"

#include <cstdint>

#include "display/colours.h"

namespace veltrix {

namespace {

constexpr std::uint32_t HeadersLength = 14 + 40;
constexpr std::uint32_t DotsPerMetre = 3780;  // 96 to the inch

void PutNumber(std::string& bytes, std::uint32_t number, int length) {
    for (int i = 0; i < length; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFF);
}

}  // namespace

std::string BmpBytes(const Bitmap& image) {
    const auto width = static_cast<std::size_t>(image.width);
    const auto height = static_cast<std::size_t>(image.height);
    const std::size_t rowLength = (3 * width + 3) / 4 * 4;
    const auto length = static_cast<std::uint32_t>(rowLength * height);
    std::string bytes = "BM";
    bytes.reserve(HeadersLength + length);
    PutNumber(bytes, HeadersLength + length, 4);
    PutNumber(bytes, 0, 4);
    PutNumber(bytes, HeadersLength, 4);
    PutNumber(bytes, 40, 4);
    PutNumber(bytes, static_cast<std::uint32_t>(width), 4);
    PutNumber(bytes, static_cast<std::uint32_t>(height), 4);
    PutNumber(bytes, 1, 2);   // planes
    PutNumber(bytes, 24, 2);  // bits a pixel
    PutNumber(bytes, 0, 4);   // uncompressed
    PutNumber(bytes, length, 4);
    PutNumber(bytes, DotsPerMetre, 4);
    PutNumber(bytes, DotsPerMetre, 4);
    PutNumber(bytes, 0, 4);  // no palette
    PutNumber(bytes, 0, 4);
    for (std::size_t y = height; y-- > 0;) {
        for (std::size_t x = 0; x < width; ++x) {
            const ColourValue color = image.pixels[y * width + x];
            bytes += {static_cast<char>(BlueOf(color)), static_cast<char>(GreenOf(color)),
                      static_cast<char>(RedOf(color))};
        }
        bytes.append(rowLength - 3 * width, '\0');
    }
    return bytes;
}

void SaveBitmap(Files& files, std::string_view name, const Bitmap& image) {
    files.WriteWhole(name, BmpBytes(image));
}

}  // namespace veltrix
