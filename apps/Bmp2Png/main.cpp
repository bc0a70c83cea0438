// Converts bitmaps, such as the pictures that the station publishes, to PNG files beside them.

#include <QBuffer>
#include <QImage>
#include <QLoggingCategory>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "common/arguments.h"
#include "common/letter_case.h"
#include "platform/qt/picture_head.h"
#include "platform/qt/whole_file.h"

namespace {

using namespace veltrix;

constexpr int ExitFailed = 1;
constexpr int ExitUsage = 64;

constexpr const char* Help =
    "Bmp2Png FILE.bmp...\n"
    "\n"
    "Writes each bitmap as FILE.png beside it. An older file of that name is replaced in one\n"
    "step, so whoever reads it meanwhile gets the old or the new one, whole. A bitmap that\n"
    "cannot be converted changes nothing, and the others are converted all the same.\n"
    "\n"
    "  --version, --help\n"
    "  --                 all that follow are names of files\n"
    "\n"
    "Exit code 0; 1 when a file is no bitmap, or cannot be read or written; 64 for a wrong\n"
    "command line.\n";

std::vector<std::filesystem::path> NamesOf(const std::vector<std::string>& arguments) {
    std::vector<std::filesystem::path> names;
    bool areNames = false;
    for (const std::string& argument : arguments) {
        if (!areNames && argument == "--") {
            areNames = true;
            continue;
        }
        if (!areNames && argument.starts_with("-")) RefuseOption(argument);
        names.emplace_back(argument);
        if (!EqualIgnoringCase(names.back().extension().string(), ".bmp"))
            throw WrongUse{"'" + argument + "' does not end in .bmp"};
    }
    if (names.empty()) throw WrongUse{"the name of a bitmap is missing; --help tells more"};
    return names;
}

/// The picture in the bytes of a BMP file; nothing when they are no such file or it is cut short.
std::optional<QImage> PictureIn(const std::string& content) {
    const std::optional<PictureHead> head = HeadOfPicture(content);
    if (!head || head->kind != PictureKind::Bmp) return {};
    const QImage image = QImage::fromData(reinterpret_cast<const uchar*>(content.data()),
                                          static_cast<int>(content.size()), "BMP");
    if (image.size() != QSize(head->width, head->height)) return {};
    return image;
}

/// What went wrong; empty when the picture is written.
std::string Convert(const std::filesystem::path& name) {
    try {
        const std::optional<QImage> image = PictureIn(ReadFileWhole(name.string()));
        if (!image) return "no bitmap, or not all of it";
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        if (!image->save(&buffer, "PNG")) return "cannot be written as PNG";
        std::filesystem::path target = name;
        WriteFileWhole(target.replace_extension(".png").string(),
                       {bytes.constData(), static_cast<std::size_t>(bytes.size())});
        return {};
    } catch (const std::system_error& error) {
        return error.code().message();
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto end = std::ranges::find(arguments, "--");
    if (std::find(arguments.begin(), end, "--help") != end) {
        std::fputs(Help, stdout);
        return 0;
    }
    if (std::find(arguments.begin(), end, "--version") != end) {
        std::puts("Bmp2Png " VELTRIX_VERSION);
        return 0;
    }
    QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio*=false"));
    try {
        int code = 0;
        for (const std::filesystem::path& name : NamesOf(arguments)) {
            const std::string problem = Convert(name);
            if (problem.empty()) continue;
            std::fprintf(stderr, "Bmp2Png: %s: %s\n", name.c_str(), problem.c_str());
            code = ExitFailed;
        }
        return code;
    } catch (const WrongUse& wrong) {
        std::fprintf(stderr, "Bmp2Png: %s\n", wrong.text.c_str());
        return ExitUsage;
    }
}
