#pragma once
// The sound files that are played one after the other.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltrix {

/// True when `a` comes before `b` as people sort names: digits by the number they make ("day 9" before
/// "day 10"), letters without regard to case. Names that differ are never equal.
bool ComesBefore(std::string_view a, std::string_view b);

/// Files by name. Each entry is a file, a folder (its files, but hidden ones, not those of folders in it) or
/// a pattern with * and ?. Entries keep their order; the files of one are sorted by ComesBefore(). The disk
/// is looked at anew for each file, so that those that appear behind the present one are played, too.
class FileList {
  public:
    /// `names`: one entry, several with "|" between them, or a play list (.m3u, .m3u8: an entry a line, from
    /// the list's folder on). Raises FileNotFound for a play list that cannot be read.
    explicit FileList(const std::string& names);

    /// The file that is next; none at the end.
    std::optional<std::string> Next();
    /// Goes behind the file that Next() told.
    void Take(const std::string& file);
    /// Goes back before the first file.
    void Rewind();

  private:
    void AddPlayList(const std::string& name);

    std::vector<std::string> entries_;
    std::size_t entry_ = 0;
    std::string last_;  // taken of this entry; empty: none
};

}  // namespace veltrix
