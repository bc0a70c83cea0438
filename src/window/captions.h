#pragma once
// The models' texts as a toolkit wants them that takes "&" and markup for its own.

#include <QString>
#include <string>

namespace veltrix {

/// Text of a model as it is.
QString ToText(const std::string& text);

/// A caption as the user reads it: "&&" is "&", and so is a single "&".
QString ReadableCaption(const std::string& caption);

/// A text for a button, tab or title whose "&" are no mnemonics.
QString WithoutMnemonics(QString text);

/// A tool tip that wraps and is never taken for markup; empty stays empty.
QString PlainToolTip(const std::string& text);

}  // namespace veltrix
