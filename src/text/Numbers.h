// Reading and writing numbers as the records' texts carry them. Independent of the locale.
#pragma once

#include <string>
#include <string_view>

namespace walrim {

/// The longest number that text begins with (leading blanks and TABs allowed; sign, digits, ".", digits, exponent E or
/// e), 0 where there is none or where it fits no double. Never infinite, never NaN; hexadecimal forms are not numbers.
[[nodiscard]] double LeadingNumber(std::string_view text);

/// Whether text is a number of that form, without blanks, and nothing else. Its value may fit no double.
[[nodiscard]] bool IsNumber(std::string_view text);

/// LeadingNumber as an integer: rounded down, kept within low..high.
[[nodiscard]] long long LeadingInteger(std::string_view text, long long low, long long high);

/// Appends a number in general form with up to 15 significant digits: "34.6917361111111", "1E+25", "-0.5", "0".
/// Plain digits for magnitudes from 1E-4 (inclusive) up to below 1E+15, else an exponent of at least two digits.
void AppendGeneralNumber(std::string& out, double value);

/// General form with the fewest digits that read back as the same value.
[[nodiscard]] std::string ShortestNumber(double value);
[[nodiscard]] std::string ShortestNumber(float value);

/// The same, appended.
void AppendShortestNumber(std::string& out, double value);
void AppendShortestNumber(std::string& out, float value);
void AppendInteger(std::string& out, long long value);

/// Whole number with at least digits digits: PadNumber(7, 2) is "07". Negative values carry the sign in front.
[[nodiscard]] std::string PadNumber(long long value, int digits);
void AppendPadded(std::string& out, long long value, int digits);

}  // namespace walrim
