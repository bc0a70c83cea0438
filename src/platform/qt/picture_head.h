#pragma once
// The outside of a picture file: its kind, its size, and whether all of it is there.

#include <optional>
#include <string_view>

namespace veltrix {

/// The kinds of picture files that are read.
enum class PictureKind { Bmp, Jpg, Gif };

/// What the head of a picture file says of its first image.
struct PictureHead {
    PictureKind kind = PictureKind::Bmp;
    int width = 0;   ///< pixels, above 0
    int height = 0;  ///< pixels, above 0
};

/// The kind of picture that a content beginning with `start` can only be; nothing for any other content.
std::optional<PictureKind> KindOfPicture(std::string_view start);

/// Reads the structure of a BMP, JPG or GIF file without decoding a pixel, since the decoders take what is
/// cut short for a picture whose rest is grey. Nothing when it is none of them or ends before the (first)
/// image does.
std::optional<PictureHead> HeadOfPicture(std::string_view content);

}  // namespace veltrix
