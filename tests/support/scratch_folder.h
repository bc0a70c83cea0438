#pragma once
// A folder of a test's own.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace veltrix {

/// A new folder under the computer's folder for temporary files, removed with all it holds at the end.
class ScratchFolder {
  public:
    ScratchFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "veltrix-test-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no scratch folder: " + name);
        path_ = name;
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::string Text() const { return path_.string(); }
    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

    /// The content of a file in it; empty when it is missing.
    std::string Content(std::string_view name) const {
        std::ifstream file(path_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// Writes a file in it, with the folders it needs.
    void Put(std::string_view name, std::string_view content) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary) << content;
    }

  private:
    std::filesystem::path path_;
};

}  // namespace veltrix
