#include "platform/qt/qt_pictures.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QLoggingCategory>
#include <array>

#include "common/failure.h"
#include "platform/qt/picture_head.h"
#include "platform/qt/resources.h"

namespace veltrix {

namespace {

constexpr int MostPixelsAWay = 8192;
/// More than the largest picture takes in any of the forms.
constexpr std::size_t MostBytes = std::size_t{300} << 20;
/// Qt's own limit for one image, in MiB; the largest picture takes 256.
constexpr int AllocationLimit = 512;

Failure InvalidPicture(std::string_view name) {
    return {errors::InvalidPicture, "Invalid picture: " + std::string(name), "QtPictures"};
}

const char* FormatOf(PictureKind kind) {
    switch (kind) {
        case PictureKind::Bmp:
            return "bmp";
        case PictureKind::Jpg:
            return "jpeg";
        case PictureKind::Gif:
            return "gif";
    }
    return "";
}

/// The content of a file that begins as a picture does; others are not read on, whatever their length.
std::string ContentOf(InputFile& file, std::string_view name) {
    std::string content;
    std::array<char, 65536> buffer;
    while (const std::size_t count = file.Read(std::as_writable_bytes(std::span(buffer)))) {
        content.append(buffer.data(), count);
        if (!KindOfPicture(content) || content.size() > MostBytes) throw InvalidPicture(name);
    }
    return content;
}

Bitmap BitmapOf(const QImage& decoded, bool isTransparentBlack) {
    const QImage image =
        decoded.convertToFormat(isTransparentBlack ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    Bitmap bitmap{image.width(), image.height(), {}};
    bitmap.pixels.reserve(static_cast<std::size_t>(bitmap.width) * static_cast<std::size_t>(bitmap.height));
    for (int y = 0; y < bitmap.height; ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < bitmap.width; ++x) {
            const QRgb pixel = row[x];
            bitmap.pixels.push_back(qAlpha(pixel) == 0 ? Black
                                                       : Rgb(qRed(pixel), qGreen(pixel), qBlue(pixel)));
        }
    }
    return bitmap;
}

}  // namespace

QtPictures::QtPictures(const std::string& workingDirectory) : files_(workingDirectory) {
    QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio*=false"));
    QImageReader::setAllocationLimit(AllocationLimit);
    resources::Open();
}

Bitmap QtPictures::Load(std::string_view name) {
    const std::string content = ContentOf(*files_.Open(name), name);
    const std::optional<PictureHead> head = HeadOfPicture(content);
    if (!head || head->width > MostPixelsAWay || head->height > MostPixelsAWay) throw InvalidPicture(name);

    QByteArray bytes = QByteArray::fromRawData(content.data(), static_cast<qsizetype>(content.size()));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, FormatOf(head->kind));
    reader.setAutoDetectImageFormat(false);
    const QImage image = reader.read();
    if (image.size() != QSize(head->width, head->height)) throw InvalidPicture(name);
    return BitmapOf(image, head->kind == PictureKind::Gif);
}

Bitmap QtPictures::BuiltIn(BuiltInPicture which) {
    const bool isSplash = which == BuiltInPicture::Splash;
    return BitmapOf(QImage(QLatin1String(isSplash ? resources::Splash : resources::PolarBackground)), false);
}

std::vector<std::byte> QtPictures::Coastlines() {
    return resources::CoastlineBytes();
}

}  // namespace veltrix
