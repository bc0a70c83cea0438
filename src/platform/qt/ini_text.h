#pragma once
// Settings as the text of an INI file that people edit, too.

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace veltrix {

/// The sections, keys, values and comments of one text. Sections and keys are compared without regard to
/// case.
///
/// A value stands behind its "=" as it is; one with blanks at an end, or with quotes at both, stands in one
/// more pair of quotes, which reading takes off. In the name of a section or key "%" and two hexadecimal
/// digits stand for a character that the form has no room for.
class IniText {
  public:
    /// Text that is not UTF-8 is taken as Latin-1, which older editors write.
    explicit IniText(std::string_view text);
    ~IniText();
    IniText(IniText&&) noexcept;
    IniText& operator=(IniText&&) noexcept;

    /// The value of a key; nothing when the text has no such key.
    std::optional<std::string> Value(std::string_view section, std::string_view key) const;
    /// REQUIRES a value as StorableText() gives it; it is kept to the byte.
    void SetValue(std::string_view section, std::string_view key, std::string_view value);

    /// The whole as text, with line feeds, comments in their places.
    std::string Text() const;

    /// False when `text` holds something that the text made of it would not: lines that are no INI lines,
    /// keys given twice, NULs. Text that is not UTF-8 counts as such, for it may be no text at all.
    static bool KeepsAllOf(std::string_view text);

    /// True when two names of sections or keys are one.
    static bool SameName(std::string_view one, std::string_view other);

  private:
    struct Parsed;
    std::unique_ptr<Parsed> parsed_;
};

/// A value as one line of UTF-8 can hold it: line ends and NULs are blanks, bytes that are no UTF-8 the
/// character that stands for those. Every other text is as it was.
std::string StorableText(std::string_view value);

}  // namespace veltrix
