#pragma once
// Numbers and times as text. Every number and stamp in a file, a message or a box goes through these, so that
// the regional settings of a computer never reach what another computer reads.

#include <string>
#include <string_view>

#include "common/date_time.h"

namespace veltrix {

/// The number at the start of `text`, by the rules of a plain numeric prefix: leading blanks, sign, digits
/// with at most one decimal sign, exponent. Every "," counts as ".". Text without a number gives 0; a number
/// beyond the range of an 8-byte float gives the largest one of its sign, so that range checks refuse it.
double ValNeutral(std::string_view text);

/// `value` by a mask: "0" a digit that is always written, "#" a digit written only when there is one, "." the
/// decimal point; what stands before and behind these in the mask is copied. Rounds half away from zero on
/// the decimal digits of the value. A negative number has its minus sign before the digits, outside the
/// mask's count. Not a finite number: "0" digits only. The result never holds a ",".
std::string FormatNeutral(double value, std::string_view mask);

/// `date` by a mask of "YYYY", "MM", "DD", "HH", "SS"; "MM" means minutes behind "HH", else the month.
/// Everything else is copied.
std::string FormatDate(DateTime date, std::string_view mask);

/// `date` in the general form, "YYYY/MM/DD HH:MM:SS".
std::string GeneralDate(DateTime date);

/// `value` in the general form: the shortest text that reads back the same, with a decimal point, in plain
/// digits from 1e-5 to below 1e15 and with an exponent outside.
std::string GeneralNumber(double value);
/// The same for a single-precision number: the shortest text that reads back that number.
std::string GeneralSingle(float value);

/// Puts "/" at characters 5 and 8 and ":" at characters 14 and 17 of a text of the form "YYYY/MM/DD
/// HH:MM:SS". A shorter text has only those of the four that it reaches changed.
void FixStampSeparators(std::string& text);

/// The date-time of a stamp. When `text` has the length of "YYYY/MM/DD HH:MM:SS" its four separators are
/// first replaced by our own, in place, whatever they were. A date alone, or a date and a time without
/// seconds, is read too. Raises TypeMismatch when the text is no date-time.
DateTime ParseStamp(std::string& text);

}  // namespace veltrix
