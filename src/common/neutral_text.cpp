#include "common/neutral_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "common/failure.h"

namespace veltrix {

namespace {

constexpr std::string_view StampForm = "YYYY/MM/DD HH:MM:SS";

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// A finite number above 0 as its shortest decimal digits d1 d2 d3 ... with the value 0.d1d2d3... x
/// 10^exponent.
struct Decimal {
    std::string digits;
    int exponent = 0;
};

Decimal DecimalOf(double value) {
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::scientific).ptr;
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const std::size_t mark = text.find('e');
    Decimal decimal;
    for (const char c : text.substr(0, mark))
        if (IsDigit(c)) decimal.digits += c;
    const bool negative = text[mark + 1] == '-';
    int exponent = 0;
    std::from_chars(text.data() + mark + 2, text.data() + text.size(), exponent);
    decimal.exponent = (negative ? -exponent : exponent) + 1;
    return decimal;
}

/// Digits of `value` (0 or above) rounded half away from zero to `decimals` places, as one integer text
/// without its decimal point and without leading zeros.
std::string ScaledDigits(double value, int decimals) {
    if (value == 0) return "";
    const Decimal decimal = DecimalOf(value);
    const int kept = decimal.exponent + decimals;
    if (kept < 0) return "";
    std::string digits = decimal.digits.substr(0, static_cast<std::size_t>(kept));
    digits.resize(static_cast<std::size_t>(kept), '0');
    const auto next = static_cast<std::size_t>(kept);
    if (next < decimal.digits.size() && decimal.digits[next] >= '5') {
        std::size_t i = digits.size();
        while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
        if (i > 0)
            ++digits[i - 1];
        else
            digits.insert(digits.begin(), '1');
    }
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

/// True when the decimal number `text`, which is not 0, is below 1.
bool IsBelowOne(std::string_view text) {
    constexpr long Far = 1000000;
    const std::size_t mark = std::min(text.find_first_of("eE"), text.size());
    const std::size_t point = std::min(text.find('.'), mark);
    const std::size_t leading = text.find_first_of("123456789");
    std::string_view power = text.substr(std::min(mark + 1, text.size()));
    if (power.starts_with('+')) power.remove_prefix(1);
    long exponent = 0;
    if (std::from_chars(power.data(), power.data() + power.size(), exponent).ec ==
        std::errc::result_out_of_range)
        exponent = power.starts_with('-') ? -Far : Far;
    return static_cast<long>(point) - static_cast<long>(leading) + exponent <= 0;
}

/// The part of a date mask at `position` that stands for a number, or an empty view.
std::string_view FieldAt(std::string_view mask, std::size_t position) {
    for (const std::string_view field : {"YYYY", "MM", "DD", "HH", "SS"})
        if (mask.substr(position, field.size()) == field) return mask.substr(position, field.size());
    return {};
}

std::string TwoDigits(int value) {
    return {static_cast<char>('0' + value / 10 % 10), static_cast<char>('0' + value % 10)};
}

/// Reads decimal digits at the start of `text` and takes them off. False when there are none or more than
/// `most`.
bool TakeNumber(std::string_view& text, std::size_t most, int& value) {
    std::size_t length = 0;
    while (length < text.size() && IsDigit(text[length])) ++length;
    if (length == 0 || length > most) return false;
    std::from_chars(text.data(), text.data() + length, value);
    text.remove_prefix(length);
    return true;
}

bool TakeOneOf(std::string_view& text, std::string_view separators) {
    if (text.empty() || separators.find(text.front()) == std::string_view::npos) return false;
    text.remove_prefix(1);
    return true;
}

bool ReadTime(std::string_view text, CalendarParts& parts) {
    if (!TakeNumber(text, 2, parts.hour) || !TakeOneOf(text, ":") || !TakeNumber(text, 2, parts.minute))
        return false;
    if (text.empty()) return true;
    return TakeOneOf(text, ":") && TakeNumber(text, 2, parts.second) && text.empty();
}

bool ReadStamp(std::string_view text, CalendarParts& parts) {
    constexpr std::string_view Separators = "/-.";
    parts = CalendarParts{};
    if (!TakeNumber(text, 4, parts.year) || !TakeOneOf(text, Separators) ||
        !TakeNumber(text, 2, parts.month) || !TakeOneOf(text, Separators) || !TakeNumber(text, 2, parts.day))
        return false;
    if (!text.empty() && !(TakeOneOf(text, " ") && ReadTime(text, parts))) return false;
    return IsCalendarDate(parts);
}

/// In plain digits where these are not too many.
template <typename Float>
std::string ShortestText(Float value) {
    std::array<char, 40> buffer{};
    const double size = std::abs(value);
    const bool plain = value == 0 || (size >= 1e-5 && size < 1e15);
    const auto form = plain ? std::chars_format::fixed : std::chars_format::scientific;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value == 0 ? 0 : value, form).ptr;
    return {buffer.data(), end};
}

}  // namespace

double ValNeutral(std::string_view text) {
    std::string number;
    number.reserve(text.size());
    for (const char c : text) number += c == ',' ? '.' : c;
    std::size_t start = number.find_first_not_of(" \t");
    if (start == std::string::npos) return 0;
    const bool negative = number[start] == '-';
    if (negative || number[start] == '+') ++start;
    // from_chars would read names such as "inf" too.
    if (start >= number.size() || (!IsDigit(number[start]) && number[start] != '.')) return 0;
    double value = 0;
    const char* const first = number.data() + start;
    const auto [end, error] = std::from_chars(first, number.data() + number.size(), value);
    if (error == std::errc::invalid_argument) return 0;
    if (error == std::errc::result_out_of_range) {
        const std::string_view read(first, static_cast<std::size_t>(end - first));
        value = IsBelowOne(read) ? 0 : std::numeric_limits<double>::max();
    }
    return negative ? -value : value;
}

std::string FormatNeutral(double value, std::string_view mask) {
    const std::size_t first = std::min(mask.find_first_of("0#."), mask.size());
    const std::size_t last = std::min(mask.find_first_not_of("0#.", first), mask.size());
    const std::string_view places = mask.substr(first, last - first);
    const std::size_t point = std::min(places.find('.'), places.size());
    const std::string_view whole = places.substr(0, point);
    const std::string_view fraction = places.substr(std::min(point + 1, places.size()));

    std::string digits =
        std::isfinite(value) ? ScaledDigits(std::abs(value), static_cast<int>(fraction.size())) : "";
    const auto fewest = static_cast<std::size_t>(std::ranges::count(whole, '0')) + fraction.size();
    if (digits.size() < fewest) digits.insert(0, fewest - digits.size(), '0');

    std::string tail = digits.substr(digits.size() - fraction.size());
    while (!tail.empty() && tail.back() == '0' && fraction[tail.size() - 1] == '#') tail.pop_back();

    std::string text(mask.substr(0, first));
    if (value < 0) text += '-';
    text.append(digits, 0, digits.size() - fraction.size());
    if (point < places.size()) text += '.';
    text += tail;
    text += mask.substr(last);
    std::ranges::replace(text, ',', '.');
    return text;
}

std::string FormatDate(DateTime date, std::string_view mask) {
    const CalendarParts parts = CalendarOf(date);
    std::string text;
    bool afterHour = false;
    for (std::size_t i = 0; i < mask.size();) {
        const std::string_view field = FieldAt(mask, i);
        if (field.empty()) {
            text += mask[i++];
            continue;
        }
        if (field == "YYYY") text += TwoDigits(parts.year / 100) + TwoDigits(parts.year);
        if (field == "MM") text += TwoDigits(afterHour ? parts.minute : parts.month);
        if (field == "DD") text += TwoDigits(parts.day);
        if (field == "HH") text += TwoDigits(parts.hour);
        if (field == "SS") text += TwoDigits(parts.second);
        afterHour = field == "HH";
        i += field.size();
    }
    return text;
}

std::string GeneralDate(DateTime date) {
    return FormatDate(date, StampForm);
}

std::string GeneralNumber(double value) {
    return ShortestText(value);
}

std::string GeneralSingle(float value) {
    return ShortestText(value);
}

void FixStampSeparators(std::string& text) {
    constexpr std::array<std::pair<std::size_t, char>, 4> Separators{
        {{4, '/'}, {7, '/'}, {13, ':'}, {16, ':'}}};
    for (const auto& [position, separator] : Separators)
        if (position < text.size()) text[position] = separator;
}

DateTime ParseStamp(std::string& text) {
    if (text.size() == StampForm.size()) FixStampSeparators(text);
    CalendarParts parts;
    if (!ReadStamp(text, parts)) throw Failure(errors::TypeMismatch, "Type mismatch", "ParseStamp");
    return DateTimeOf(parts);
}

}  // namespace veltrix
