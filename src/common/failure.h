#pragma once
// How a failure travels: one exception type, with what the error log and the message box show of it.

#include <exception>
#include <string>
#include <string_view>

namespace veltrix {

/// Error numbers, in the numbering that the error log and its readers know.
namespace errors {
inline constexpr int InvalidCall = 5;      ///< an argument outside a function's domain, such as ln 0
inline constexpr int Overflow = 6;         ///< a value that does not fit its type; also 0 / 0
inline constexpr int OutOfRange = 9;       ///< an index outside an array
inline constexpr int DivisionByZero = 11;  ///< a number other than 0 by 0
inline constexpr int TypeMismatch = 13;    ///< a text that is no date-time
inline constexpr int Internal = 51;        ///< a part of the program itself does not work
inline constexpr int FileNotFound = 53;
inline constexpr int DeviceIo = 57;
inline constexpr int DiskFull = 61;
inline constexpr int PermissionDenied = 70;
inline constexpr int PathAccess = 75;  ///< a name that cannot be opened, such as a folder
inline constexpr int PathNotFound = 76;
inline constexpr int InvalidPicture = 481;
inline constexpr int AddressInUse = 10048;
inline constexpr int WrongSocketState = 40006;  ///< an operation that the state of a socket does not allow
}  // namespace errors

/// A line of our source: where a default argument `= __builtin_LINE()` was filled in.
using CodeLine = int;

/// A failure of a statement. The line is that of the code that raised it.
class Failure : public std::exception {
  public:
    Failure(int number, std::string description, std::string source, CodeLine where = __builtin_LINE());

    /// One of the error numbers.
    int Number() const noexcept { return number_; }
    /// What went wrong, and with what, for people.
    const std::string& Description() const noexcept { return description_; }
    /// The class, module or program that raised it.
    const std::string& Source() const noexcept { return source_; }
    /// The line of our source that raised it.
    CodeLine Line() const noexcept { return line_; }
    const char* what() const noexcept override { return description_.c_str(); }

  private:
    int number_;
    std::string description_;
    std::string source_;
    CodeLine line_;
};

}  // namespace veltrix
