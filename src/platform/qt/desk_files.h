#pragma once
// The files of the computer we run on.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"

namespace veltrix {

/// Files on the disks of this computer.
class DeskFiles final : public Files {
  public:
    /// Files relative to `workingDirectory`, which is made absolute and need not exist yet.
    explicit DeskFiles(const std::string& workingDirectory);

    bool Exists(std::string_view name) override;
    std::unique_ptr<InputFile> Open(std::string_view name) override;
    std::vector<std::string> ReadLines(std::string_view name) override;
    void AppendLine(std::string_view name, std::string_view line) override;
    void WriteWhole(std::string_view name, std::string_view content) override;
    void Delete(std::string_view name) override;
    void Copy(std::string_view from, std::string_view to) override;
    void MakeFolder(std::string_view name) override;
    DateTime DateOfLastChange(std::string_view name) override;
    bool HasArchive(std::string_view name) override;
    void ClearArchive(std::string_view name) override;
    std::vector<std::string> List(std::string_view folder, std::string_view patterns) override;
    bool IsFolder(std::string_view name) override;
    std::vector<std::string> Folders(std::string_view folder) override;
    std::vector<std::string> Drives() override;
    std::string WorkingDirectory() const override { return directory_; }

  private:
    /// The computer's name of an existing or a new file. Raises PathAccess for names that no file can have.
    std::string PathOf(std::string_view name) const;
    /// The names in a folder that are not hidden and that `isWanted`, in alphabetical order.
    std::vector<std::string> NamesIn(
        std::string_view folder,
        const std::function<bool(const std::string&, const std::filesystem::directory_entry&)>& isWanted)
        const;

    /// What tells a content of a file from a later one.
    struct Imprint {
        std::uint64_t device, inode;
        std::int64_t size, changed, touched;  ///< changed: the content; touched: also its attributes; in ns
        bool operator==(const Imprint&) const = default;
    };
    /// Nothing for a file that is missing.
    static std::optional<Imprint> ImprintOf(const std::string& path);

    std::string directory_;
    std::map<std::string, Imprint> cleared_;  // the files whose archive attribute was cleared, by path
};

}  // namespace veltrix
