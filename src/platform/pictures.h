#pragma once
// Pictures from files and those that are part of the program.

#include <cstddef>
#include <string_view>
#include <vector>

#include "common/bitmap.h"

namespace veltrix {

/// What the names of picture files match.
inline constexpr std::string_view PictureFiles = "*.bmp;*.jpg;*.gif";

/// The pictures that the program brings with it.
enum class BuiltInPicture {
    PolarBackground,  ///< 557 by 557 pixels: compass rose, degree marks and rings a tenth of the scale apart
    Splash            ///< what the splash form and the "About" tab show
};

/// Loads pictures, and hands out those that are part of the program.
class Pictures {
  public:
    virtual ~Pictures() = default;
    /// Reads a BMP, JPG or GIF file (its first image); the content decides which, not the name. The name is
    /// found as by Files. Raises what Files::Open raises when it cannot be opened, and InvalidPicture when it
    /// is none of these, damaged, cut short, or larger than 8192 pixels either way.
    virtual Bitmap Load(std::string_view name) = 0;
    /// A picture of the program's own. Never fails.
    virtual Bitmap BuiltIn(BuiltInPicture which) = 0;
    /// The coastlines that the program brings with it, in the form that cartography reads.
    virtual std::vector<std::byte> Coastlines() = 0;
};

}  // namespace veltrix
