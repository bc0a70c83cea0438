#pragma once
// Publishing: every ten minutes the displays go out as bitmaps to the user's own scripts.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "display/surface.h"
#include "platform/platform.h"

namespace veltrix {

/// What publishing works on. REQUIRES that all functions are set.
struct PublishingParts {
    Platform& platform;
    Surface& Picture1;                  ///< polar display
    Surface& Picture4;                  ///< map
    Surface& Picture5;                  ///< history plot
    std::function<Surface&()> PicSync;  ///< that of the present station
    std::function<void()> DrawPolarCaption;
    std::function<void()> DrawMapCaption;
    std::function<void()> DrawHistoryCaption;
    std::function<std::string()> FtpTo;  ///< where to upload; empty for nowhere
};

/// Draws the captions, writes the bitmaps and starts what the working directory holds of "publish.bat",
/// "Bmp2Png.exe" and "publish.cmd", without waiting for any of them. Owned by the form.
class Publishing {
  public:
    explicit Publishing(PublishingParts parts);

    /// One minute has passed; every tenth call publishes, the first one ten calls after start. Raises
    /// nothing: each step that fails is passed over, and a bitmap that cannot be written keeps its old
    /// content.
    void Publish();

    /// The user wants it now: ten calls of Publish(), one of which publishes. The count stays where it stood.
    void cmdTestFtp_Click();

    /// When the displays went out last in this run; none before the first time.
    std::optional<DateTime> LastPublished() const { return lastPublished_; }

  private:
    void DrawAndSave();
    void DeleteOldImages();
    void Convert();
    void Upload();

    PublishingParts parts_;
    std::int16_t iPublishCount = 0;  // calls since the last publication
    std::optional<DateTime> lastPublished_;
};

}  // namespace veltrix
