#pragma once
// Pictures from the files of the computer we run on, and those built into the program.

#include "platform/pictures.h"
#include "platform/qt/desk_files.h"

namespace veltrix {

/// Pictures by the decoders of Qt.
class QtPictures final : public Pictures {
  public:
    /// Names are relative to `workingDirectory`. Silences what Qt's decoders say on standard error.
    explicit QtPictures(const std::string& workingDirectory);

    /// Transparent pixels of a GIF are black; BMP files are taken as opaque.
    Bitmap Load(std::string_view name) override;
    Bitmap BuiltIn(BuiltInPicture which) override;
    std::vector<std::byte> Coastlines() override;

  private:
    DeskFiles files_;
};

}  // namespace veltrix
