#pragma once
// The block file: how finished samples pass from the recorder to the station.

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace veltrix {

/// Reads the recorder's finished blocks. A block is there when its name stands, and is taken when the station
/// has deleted it; the recorder reads nothing else from us. Owned by the form.
class BlockIntake {
  public:
    explicit BlockIntake(Files& files);

    /// What became of a try to take a block.
    enum class Outcome {
        NoBlock,     ///< none stands
        CannotOpen,  ///< it stays; the next tick tries again
        CannotRead,  ///< it stays, and will be read again from its start
        Stopped,     ///< `process` said so; it stays
        Taken        ///< all of it processed; deleted, if the computer lets us
    };

    /// Takes the block file `name` if it stands and gives its samples, left and right in turn, to `process`,
    /// as one row for a block of the usual size, else in pieces that hold whole frames. `process` returns
    /// false to stop. `onOpened` runs once the file is open. A byte without its second half at the end is
    /// dropped.
    Outcome Take(std::string_view name, const std::function<void()>& onOpened,
                 const std::function<bool(std::span<const std::int16_t>)>& process);

  private:
    Files& files_;
    std::vector<std::byte> bytes_;
    std::vector<std::int16_t> samples_;
};

}  // namespace veltrix
