#pragma once
// The truth about the storm that is being played, beside the block file.

#include <filesystem>
#include <string>

#include "recorder/sample_source.h"
#include "storm/truth.h"

namespace veltrix {

/// Appends the strikes to a table as they happen. The file stays below 4 MiB: a longer one, or one with other
/// columns, is renamed, ".old" before the extension, and begun anew. A table that cannot be written is told
/// once, and the rows are dropped. The scenario must outlive it.
class TruthFile {
  public:
    /// Begins with the strikes of `start`. Where `name` is empty, nothing is written.
    TruthFile(const Scenario& scenario, std::filesystem::path name, UtcTime start, Say say);

    /// Appends the strikes before `now`.
    void Write(UtcTime now);

  private:
    void Append(const std::string& rows);

    TruthTable table_;
    std::filesystem::path name_;
    UtcTime writtenTo_;
    Say say_;
    bool isBroken_ = false;
};

}  // namespace veltrix
