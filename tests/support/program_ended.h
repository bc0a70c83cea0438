#pragma once

namespace veltrix {

/// Thrown where a real platform would have ended the program at once.
struct ProgramEnded {};

}  // namespace veltrix
