#include "platform/qt/picture_head.h"

#include <cstdint>
#include <cstdlib>
#include <limits>

namespace veltrix {

namespace {

/// The content ends, or says what cannot be.
struct Broken {};

/// Reads numbers from a content one behind the other. Throws Broken at its end.
class Bytes {
  public:
    explicit Bytes(std::string_view content) : rest_(content) {}

    int Byte() {
        const auto byte = static_cast<unsigned char>(rest_.empty() ? throw Broken() : rest_.front());
        rest_.remove_prefix(1);
        return byte;
    }
    void Skip(std::int64_t count) {
        if (count < 0 || count > static_cast<std::int64_t>(rest_.size())) throw Broken();
        rest_.remove_prefix(static_cast<std::size_t>(count));
    }
    int Little16() {
        const int low = Byte();
        return low + 256 * Byte();
    }
    int Big16() {
        const int high = Byte();
        return 256 * high + Byte();
    }
    std::int64_t Little32() {
        const std::int64_t low = Little16();
        return low + 65536 * std::int64_t{Little16()};
    }
    std::int64_t Signed32() { return static_cast<std::int32_t>(Little32()); }

  private:
    std::string_view rest_;
};

PictureHead HeadOf(PictureKind kind, std::int64_t width, std::int64_t height) {
    constexpr std::int64_t Most = std::numeric_limits<int>::max();
    if (width <= 0 || height <= 0 || width > Most || height > Most) throw Broken();
    return {kind, static_cast<int>(width), static_cast<int>(height)};
}

PictureHead HeadOfBmp(std::string_view content) {
    constexpr int FileHeader = 14;
    constexpr int OldHeader = 12;
    constexpr int LeastHeader = 40;
    Bytes bytes(content);
    bytes.Skip(10);
    const std::int64_t offset = bytes.Little32();
    const std::int64_t header = bytes.Little32();
    if (header != OldHeader && header < LeastHeader) throw Broken();
    const bool isOld = header == OldHeader;
    const std::int64_t width = isOld ? bytes.Little16() : bytes.Signed32();
    // Rows from the top are told by a negative height.
    const std::int64_t height = std::abs(isOld ? bytes.Little16() : bytes.Signed32());
    bytes.Skip(2);
    const int bits = bytes.Little16();
    const std::int64_t compression = isOld ? 0 : bytes.Little32();
    const std::int64_t packedSize = isOld ? 0 : bytes.Little32();
    const PictureHead head = HeadOf(PictureKind::Bmp, width, height);

    const bool isPacked = compression == 1 || compression == 2;
    if (offset < FileHeader + header || (isPacked && packedSize == 0)) throw Broken();
    const std::int64_t row = (width * bits + 31) / 32 * 4;
    Bytes pixels(content);
    pixels.Skip(offset);
    // Divided rather than multiplied: the product may not fit.
    if (!isPacked && row > std::numeric_limits<std::int64_t>::max() / height) throw Broken();
    pixels.Skip(isPacked ? packedSize : row * height);
    return head;
}

/// Runs over the packed pixels of a scan to the marker behind them, which it returns.
int MarkerBehindScan(Bytes& bytes) {
    for (;;) {
        while (bytes.Byte() != 0xff) continue;
        int marker = bytes.Byte();
        while (marker == 0xff) marker = bytes.Byte();
        const bool isPartOfScan = marker == 0 || (marker >= 0xd0 && marker <= 0xd7);
        if (!isPartOfScan) return marker;
    }
}

PictureHead HeadOfJpg(std::string_view content) {
    constexpr int EndOfImage = 0xd9;
    constexpr int StartOfScan = 0xda;
    Bytes bytes(content);
    bytes.Skip(2);
    std::optional<PictureHead> head;
    bool hasScan = false;
    // What stands between two segments is passed over in the same way as a scan.
    for (int marker = MarkerBehindScan(bytes); marker != EndOfImage; marker = MarkerBehindScan(bytes)) {
        const int length = bytes.Big16() - 2;
        const bool isFrame =
            marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
        hasScan = hasScan || marker == StartOfScan;
        if (!isFrame) {
            bytes.Skip(length);
            continue;
        }
        bytes.Skip(1);
        const int height = bytes.Big16();
        head = HeadOf(PictureKind::Jpg, bytes.Big16(), height);
        bytes.Skip(length - 5);
    }
    if (!head || !hasScan) throw Broken();
    return *head;
}

void SkipGifColours(Bytes& bytes, int flags) {
    if (flags & 0x80) bytes.Skip(3 * (2 << (flags & 7)));
}

void SkipGifBlocks(Bytes& bytes) {
    while (const int size = bytes.Byte()) bytes.Skip(size);
}

PictureHead HeadOfGif(std::string_view content) {
    constexpr int Extension = 0x21;
    constexpr int Image = 0x2c;
    Bytes bytes(content);
    bytes.Skip(6);
    const int width = bytes.Little16();
    const PictureHead head = HeadOf(PictureKind::Gif, width, bytes.Little16());
    const int flags = bytes.Byte();
    bytes.Skip(2);
    SkipGifColours(bytes, flags);
    int block = bytes.Byte();
    for (; block == Extension; block = bytes.Byte()) {
        bytes.Skip(1);
        SkipGifBlocks(bytes);
    }
    if (block != Image) throw Broken();
    bytes.Skip(8);
    SkipGifColours(bytes, bytes.Byte());
    bytes.Skip(1);
    SkipGifBlocks(bytes);
    return head;
}

}  // namespace

std::optional<PictureKind> KindOfPicture(std::string_view start) {
    if (start.starts_with("BM")) return PictureKind::Bmp;
    if (start.starts_with("\xff\xd8\xff")) return PictureKind::Jpg;
    if (start.starts_with("GIF87a") || start.starts_with("GIF89a")) return PictureKind::Gif;
    return std::nullopt;
}

std::optional<PictureHead> HeadOfPicture(std::string_view content) {
    const std::optional<PictureKind> kind = KindOfPicture(content);
    if (!kind) return std::nullopt;
    try {
        switch (*kind) {
            case PictureKind::Bmp:
                return HeadOfBmp(content);
            case PictureKind::Jpg:
                return HeadOfJpg(content);
            case PictureKind::Gif:
                return HeadOfGif(content);
        }
    } catch (const Broken&) {
    }
    return std::nullopt;
}

}  // namespace veltrix
