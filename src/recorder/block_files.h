#pragma once
// The two names by which blocks pass to the station.

#include <cstddef>
#include <filesystem>
#include <span>

namespace veltrix {

/// The block file and the file in progress beside it. Failures raise a Failure whose description is one line
/// for the user: DiskFull, PathNotFound (the folder is gone), PermissionDenied or DeviceIo.
class BlockFiles {
  public:
    virtual ~BlockFiles() = default;

    /// True while the block file's name stands, which means that the station has not taken it.
    virtual bool BlockStands() = 0;
    /// Writes the file in progress, whole.
    virtual void WriteTemporary(std::span<const std::byte> content) = 0;

    /// What came of Publish().
    enum class Publication {
        Done,          ///< the content stands under the block file's name
        NameTaken,     ///< that name stands already; nothing was changed
        TemporaryGone  ///< somebody removed the file in progress
    };
    /// Brings the file in progress under the block file's name; never over a file that stands.
    virtual Publication Publish() = 0;
    /// Removes the file in progress, if it is there.
    virtual void RemoveTemporary() noexcept = 0;
};

/// These files on a real disk.
class DiskBlockFiles final : public BlockFiles {
  public:
    /// The file in progress is "audio.tmp" in the folder of `block`.
    explicit DiskBlockFiles(std::filesystem::path block);

    bool BlockStands() override;
    void WriteTemporary(std::span<const std::byte> content) override;
    Publication Publish() override;
    void RemoveTemporary() noexcept override;

  private:
    [[noreturn]] void Raise(int error) const;

    std::filesystem::path block_;
    std::filesystem::path temporary_;
};

}  // namespace veltrix
