#pragma once
// The clipboard of the desktop.

#include <string>

namespace veltrix {

/// Takes what the user is to paste elsewhere.
class Clipboard {
  public:
    virtual ~Clipboard() = default;
    /// Puts a text there, in place of what it held. Without a desktop nobody else sees it.
    virtual void SetText(const std::string& text) = 0;
};

}  // namespace veltrix
