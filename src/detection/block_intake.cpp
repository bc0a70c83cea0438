#include "detection/block_intake.h"

#include <bit>
#include <cstring>

#include "platform/error_convention.h"

namespace veltrix {

namespace {

constexpr std::size_t BlockBytes = 128 * 1024;

}  // namespace

BlockIntake::BlockIntake(Files& files) : files_(files), bytes_(BlockBytes), samples_(BlockBytes / 2) {}

BlockIntake::Outcome BlockIntake::Take(std::string_view name, const std::function<void()>& onOpened,
                                       const std::function<bool(std::span<const std::int16_t>)>& process) {
    if (!files_.Exists(name)) return Outcome::NoBlock;
    std::unique_ptr<InputFile> file;
    try {
        file = files_.Open(name);
    } catch (const Failure&) {
        return Outcome::CannotOpen;
    }
    onOpened();
    for (;;) {
        std::size_t got = 0;
        try {
            got = file->Read(bytes_);
        } catch (const Failure&) {
            return Outcome::CannotRead;
        }
        if (got == 0) break;
        const std::size_t count = got / 2;
        std::memcpy(samples_.data(), bytes_.data(), 2 * count);
        if constexpr (std::endian::native == std::endian::big)
            for (std::int16_t& s : samples_) s = static_cast<std::int16_t>((s << 8) | ((s >> 8) & 0xff));
        if (!process(std::span(samples_).first(count))) return Outcome::Stopped;
    }
    file.reset();
    SkippingErrors([&] { files_.Delete(name); });
    return Outcome::Taken;
}

}  // namespace veltrix
