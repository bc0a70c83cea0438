#pragma once
// The message box that asks the user what to do about an error.

#include <string>

namespace veltrix {

/// Reply numbers of the message box.
namespace reply {
inline constexpr int None = 0;
inline constexpr int Ok = 1;
inline constexpr int Cancel = 2;
inline constexpr int Abort = 3;
inline constexpr int Retry = 4;
inline constexpr int Ignore = 5;
inline constexpr int Yes = 6;
inline constexpr int No = 7;
}  // namespace reply

/// Asks the user. One object for the whole program.
class MessageBox {
  public:
    virtual ~MessageBox() = default;

    /// What the box shows.
    struct Question {
        int lNumber = 0;  ///< the error's number
        std::string text;
        int lButtons = 2;  ///< 2 is abort, retry, ignore
        std::string title;
    };

    /// Shows the box and returns the reply number. No timer fires while it stands. Without a screen the text
    /// goes to standard error, equal ones once in a while with their count, and the reply is `reply::Ignore`.
    virtual int Ask(const Question& question) = 0;
};

}  // namespace veltrix
