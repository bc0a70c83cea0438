#pragma once
// The files of the computer we run on.

#include <system_error>

#include "platform/files.h"

namespace veltrix {

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
    std::vector<std::string> List(std::string_view folder, std::string_view patterns) override;
    std::string WorkingDirectory() const override { return directory_; }

  private:
    /// The computer's name of an existing or a new file. Raises PathAccess for names that no file can have.
    std::string PathOf(std::string_view name) const;

    std::string directory_;
};

}  // namespace veltrix
