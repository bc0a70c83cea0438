#pragma once
// An open file of the operating system.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace veltrix {

/// The present errno as an exception. REQUIRES that a call has just failed.
[[noreturn]] inline void ThrowErrno() {
    throw std::system_error(errno, std::generic_category());
}

/// Owns a file descriptor and closes it. Started programs never inherit it, and opening never waits.
class FileHandle {
  public:
    /// Opens `path` with the flags of open(2). Raises std::system_error.
    FileHandle(const std::string& path, int flags, mode_t mode = 0)
        : descriptor_(::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode)) {
        if (descriptor_ < 0) ThrowErrno();
    }
    /// Takes over what is open already.
    explicit FileHandle(int descriptor) : descriptor_(descriptor) {}
    ~FileHandle() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }
    FileHandle(FileHandle&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileHandle& operator=(FileHandle&&) = delete;

    /// The descriptor; -1 once it was given away.
    int Descriptor() const { return descriptor_; }

    /// What the system tells of the file. This and what follows raises std::system_error.
    struct stat Status() const {
        struct stat status {};
        if (::fstat(descriptor_, &status) != 0) ThrowErrno();
        return status;
    }

    /// Writes all of `content`, however many calls that takes.
    void WriteAll(std::string_view content) {
        while (!content.empty()) {
            const ssize_t written = ::write(descriptor_, content.data(), content.size());
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) ThrowErrno();
            content.remove_prefix(static_cast<std::size_t>(written));
        }
    }

    /// Reads at most `size` bytes; 0 at the end of the file.
    std::size_t Read(void* buffer, std::size_t size) {
        for (;;) {
            const ssize_t count = ::read(descriptor_, buffer, size);
            if (count >= 0) return static_cast<std::size_t>(count);
            if (errno != EINTR) ThrowErrno();
        }
    }

    /// Closes the file, and raises what the file system tells only now.
    void Close() {
        if (::close(std::exchange(descriptor_, -1)) != 0 && errno != EINTR) ThrowErrno();
    }

  private:
    int descriptor_;
};

}  // namespace veltrix
