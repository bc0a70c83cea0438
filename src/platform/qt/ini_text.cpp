#include "platform/qt/ini_text.h"

#define SI_NO_CONVERSION   // bytes pass through as they are
#define SI_IMPLEMENTATION  // the templates themselves, so that no library is needed at run time
#include <SimpleIni.h>

#include <QStringDecoder>
#include <algorithm>
#include <map>

#include "common/letter_case.h"

namespace veltrix {

namespace {

/// A section put behind the text for reading, so that a comment at its end has something to belong to.
constexpr const char* EndMark = "%END%";

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

/// A text without the byte-order mark that some editors put first.
std::string_view WithoutMark(std::string_view text) {
    if (text.starts_with(ByteOrderMark)) text.remove_prefix(ByteOrderMark.size());
    return text;
}

bool IsQuoted(std::string_view text) {
    return text.size() >= 2 && text.front() == '"' && text.back() == '"';
}

bool IsUtf8(std::string_view text) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    [[maybe_unused]] const QString decoded = decoder(QByteArrayView(text));
    return !decoder.hasError();
}

/// A section's or key's name as it stands in the text.
std::string WrittenName(std::string_view name) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    const bool isUtf8 = IsUtf8(name);
    const std::size_t mark = name.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0;
    std::string written;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        const bool isAtEnd = i == 0 || i + 1 == name.size();
        const auto code = static_cast<unsigned char>(c);
        const bool isKept = i >= mark && code >= ' ' && (code < 0x80 || isUtf8) && c != '=' && c != '%' &&
                            c != ']' && !(isAtEnd && (c == ' ' || c == '[' || c == ';' || c == '#'));
        if (isKept) {
            written += c;
        } else {
            written += '%';
            written += Digits[code >> 4];
            written += Digits[code & 15];
        }
    }
    return written.empty() ? "%" : written;
}

std::string WrittenValue(std::string_view value) {
    const bool needsQuotes =
        !value.empty() && (IsBlank(value.front()) || IsBlank(value.back()) || IsQuoted(value));
    return needsQuotes ? "\"" + std::string(value) + "\"" : std::string(value);
}

/// Takes the first line off a text; blanks around it are left out.
std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = Trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

enum class LineKind { Blank, Comment, Section, Setting, Other };

LineKind KindOf(std::string_view line) {
    if (line.empty()) return LineKind::Blank;
    // A mark within the text would be taken off when it comes to stand first.
    if (line.find('\0') != std::string_view::npos || line.starts_with(ByteOrderMark)) return LineKind::Other;
    if (line.front() == ';' || line.front() == '#') return LineKind::Comment;
    if (line.front() == '[')
        return line.find(']') == std::string_view::npos ? LineKind::Other : LineKind::Section;
    const std::size_t equals = line.find('=');
    return equals == 0 || equals == std::string_view::npos ? LineKind::Other : LineKind::Setting;
}

/// `text` in UTF-8 without the lines that the form does not know, and with the mark at its end. The parser
/// reads on into the next line where a section's name is not closed, so it must not see such lines.
std::string Readable(std::string_view text) {
    const std::string utf8 =
        IsUtf8(text) ? std::string(text) : QString::fromLatin1(QByteArrayView(text)).toStdString();
    std::string_view rest = WithoutMark(utf8);
    std::string readable;
    while (!rest.empty()) {
        const std::string_view line = TakeLine(rest);
        if (KindOf(line) != LineKind::Other) readable.append(line).append("\n");
    }
    return readable + "\n[" + EndMark + "]\n";
}

/// What each line says, blanks around its parts left out, and how often.
std::map<std::string, int> SayingsOf(std::string_view text) {
    std::map<std::string, int> sayings;
    std::string section;
    text = WithoutMark(text);
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        const LineKind kind = KindOf(line);
        if (kind == LineKind::Section) {
            // A section that is gone on with further down is one section.
            const std::size_t end = line.find(']');
            section = "[" + LowerCase(Trimmed(line.substr(1, end - 1))) + std::string(line.substr(end));
            sayings[section] = 1;
        } else if (kind == LineKind::Setting) {
            const std::size_t equals = line.find('=');
            const std::string_view key = Trimmed(line.substr(0, equals));
            const std::string_view value = Trimmed(line.substr(equals + 1));
            ++sayings[section + std::string(key) + "=" + std::string(value)];
        } else if (kind != LineKind::Blank) {
            ++sayings[std::string(line)];
        }
    }
    return sayings;
}

}  // namespace

struct IniText::Parsed {
    CSimpleIniA ini{true};
    std::string commentAtEnd;
};

IniText::IniText(std::string_view text) : parsed_(std::make_unique<Parsed>()) {
    CSimpleIniA& ini = parsed_->ini;
    ini.SetSpaces(false);
    ini.LoadData(Readable(text));
    CSimpleIniA::TNamesDepend sections;
    ini.GetAllSections(sections);
    for (const CSimpleIniA::Entry& section : sections)
        if (std::string_view(section.pItem) == EndMark && section.pComment)
            parsed_->commentAtEnd = section.pComment;
    ini.Delete(EndMark, nullptr);
}

IniText::~IniText() = default;
IniText::IniText(IniText&&) noexcept = default;
IniText& IniText::operator=(IniText&&) noexcept = default;

std::optional<std::string> IniText::Value(std::string_view section, std::string_view key) const {
    const char* const written = parsed_->ini.GetValue(WrittenName(section).c_str(), WrittenName(key).c_str());
    if (written == nullptr) return {};
    const std::string_view value = written;
    return std::string(IsQuoted(value) ? value.substr(1, value.size() - 2) : value);
}

void IniText::SetValue(std::string_view section, std::string_view key, std::string_view value) {
    parsed_->ini.SetValue(WrittenName(section).c_str(), WrittenName(key).c_str(),
                          WrittenValue(value).c_str());
}

std::string IniText::Text() const {
    std::string text;
    parsed_->ini.Save(text);
    if (!parsed_->commentAtEnd.empty()) text += (text.empty() ? "" : "\n") + parsed_->commentAtEnd + "\n";
    return text;
}

bool IniText::KeepsAllOf(std::string_view text) {
    return IsUtf8(text) && SayingsOf(text) == SayingsOf(IniText(text).Text());
}

bool IniText::SameName(std::string_view one, std::string_view other) {
    return LowerCase(one) == LowerCase(other);
}

std::string StorableText(std::string_view value) {
    std::string line =
        IsUtf8(value) ? std::string(value) : QString::fromUtf8(QByteArrayView(value)).toStdString();
    for (char& c : line)
        if (c == '\r' || c == '\n' || c == '\0') c = ' ';
    return line;
}

}  // namespace veltrix
