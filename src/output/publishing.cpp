#include "output/publishing.h"

#include <utility>
#include <vector>

#include "common/pieces.h"
#include "display/bitmap_file.h"
#include "platform/error_convention.h"

namespace veltrix {

namespace {

constexpr int Interval = 10;  // calls from one publication to the next

}  // namespace

Publishing::Publishing(PublishingParts parts) : parts_(std::move(parts)) {}

void Publishing::Publish() {
    ++iPublishCount;
    if (iPublishCount < Interval) return;
    DrawAndSave();
    iPublishCount = 0;
    DeleteOldImages();
    SkippingErrors([this] { Convert(); }, [this] { Upload(); });
    lastPublished_ = parts_.platform.clock.Now();
}

void Publishing::cmdTestFtp_Click() {
    for (int i = 0; i < Interval; ++i) Publish();
}

void Publishing::DrawAndSave() {
    Files& files = parts_.platform.files;
    SkippingErrors(
        parts_.DrawPolarCaption, parts_.DrawMapCaption, parts_.DrawHistoryCaption,
        [&] { SaveBitmap(files, "picture5.bmp", parts_.Picture5.Image()); },
        [&] { SaveBitmap(files, "picture4.bmp", parts_.Picture4.Image()); },
        [&] { SaveBitmap(files, "picture1.bmp", parts_.Picture1.Image()); },
        [&] { SaveBitmap(files, "PicSync.bmp", parts_.PicSync().Image()); });
}

/// A converter that fails leaves no stale image to upload.
void Publishing::DeleteOldImages() {
    for (const std::string_view name : {"picture5.png", "picture4.png", "picture1.png"})
        SkippingErrors([&] { parts_.platform.files.Delete(name); });
}

/// The user's own script takes over from the converter.
void Publishing::Convert() {
    constexpr std::string_view Script = ".\\publish.bat";
    constexpr std::string_view Converter = ".\\Bmp2Png.exe";
    Files& files = parts_.platform.files;
    Processes& processes = parts_.platform.processes;
    if (files.IsFile(Script)) {
        processes.Start(Script, {}, WindowStyle::Hidden);
    } else if (files.IsFile(Converter)) {
        for (const char* const name : {"picture5.bmp", "picture4.bmp", "picture1.bmp"})
            SkippingErrors([&] { processes.Start(Converter, {name}, WindowStyle::Hidden); });
    }
}

void Publishing::Upload() {
    const std::string target = parts_.FtpTo();
    if (target.empty() || !parts_.platform.files.IsFile(".\\publish.cmd")) return;
    std::vector<std::string> arguments{"-s:publish.cmd"};
    for (const std::string_view word : PiecesOf(target, " ")) arguments.emplace_back(word);
    parts_.platform.processes.Start("ftp", arguments, WindowStyle::Hidden);
}

}  // namespace veltrix
