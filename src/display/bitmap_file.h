#pragma once
// Pictures as files: uncompressed bitmaps of 24 bits a pixel, which keep all colours of the displays.

#include <string>
#include <string_view>

#include "common/bitmap.h"
#include "platform/files.h"

namespace veltrix {

/// The bytes of a BMP file: file header (14 bytes), BITMAPINFOHEADER (40 bytes), then the rows from the
/// bottom up, each pixel blue, green, red, each row filled up to a multiple of four bytes.
std::string BmpBytes(const Bitmap& image);

/// Writes an image over whatever stood under that name, whole or not at all. Raises what Files raises.
void SaveBitmap(Files& files, std::string_view name, const Bitmap& image);

}  // namespace veltrix
