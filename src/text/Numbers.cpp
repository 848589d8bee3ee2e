#include "text/Numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <system_error>

#include "text/Scan.h"

namespace walrim {
namespace {

constexpr std::array<double, 16> PowersOfTen{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                             1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

/// Whether the shortest digits of a number are plain digits as std::to_chars lays them out: neither small enough for an
/// exponent nor so large that zeros of its own choice would fill up the digits.
template <typename Number>
bool IsOfMiddleSize(Number value) {
  const Number magnitude = std::abs(value);
  return magnitude >= Number(1e-4) && magnitude < Number(1e7);
}

/// Lays digits d.ddde±dd, as std::to_chars writes them, out in general form.
void AppendGeneral(std::string& out, std::string_view scientific) {
  constexpr int FirstLargeExponent = 15;
  if (Take(scientific, '-')) out += '-';
  std::string digits(TakeUpTo(scientific, 'e'));
  std::erase(digits, '.');
  int exponent = 0;
  Take(scientific, '+');
  std::from_chars(scientific.data(), scientific.data() + scientific.size(), exponent);
  if (exponent < -4 || exponent >= FirstLargeExponent) {
    out += digits[0];
    if (digits.size() > 1) out.append(".").append(digits, 1);
    out.append(exponent < 0 ? "E-" : "E+");
    return AppendPadded(out, std::abs(exponent), 2);
  }
  if (exponent < 0) {
    out.append("0.").append(static_cast<std::size_t>(-exponent - 1), '0').append(digits);
    return;
  }
  const auto whole = static_cast<std::size_t>(exponent) + 1;
  digits.resize(std::max(digits.size(), whole), '0');
  out.append(digits, 0, whole);
  if (digits.size() > whole) out.append(".").append(digits, whole);
}

/// Shortest digits with a power of ten, laid out in general form.
template <typename Number>
void AppendShortest(std::string& out, Number value) {
  if (!std::isfinite(value) || value == 0) {
    out += '0';
    return;
  }
  char buffer[64];
  if (IsOfMiddleSize(value)) {
    out.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed).ptr);
    return;
  }
  const char* end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific).ptr;
  AppendGeneral(out, std::string_view(buffer, static_cast<std::size_t>(end - buffer)));
}

/// The value of eight digits that were loaded as one little-endian word; false where they are not all digits.
bool EightDigits(std::uint64_t word, std::uint64_t& value) {
  constexpr std::uint64_t HighHalves = 0xF0F0F0F0F0F0F0F0;
  constexpr std::uint64_t Zeros = 0x3030303030303030;
  if ((word & HighHalves) != Zeros || ((word + 0x0606060606060606) & HighHalves) != Zeros) return false;
  word -= Zeros;
  word = word * 10 + (word >> 8);  // pairs, in every other byte
  constexpr std::uint64_t Pairs = 0x000000FF000000FF;
  value = ((word & Pairs) * 0x000F424000000064 + ((word >> 16) & Pairs) * 0x0000271000000001) >> 32;
  return true;
}

/// Appends the digits from at on to value; returns where they end.
std::size_t AddDigits(std::string_view text, std::size_t at, std::uint64_t& value) {
  if constexpr (std::endian::native == std::endian::little) {
    while (text.size() - at >= 8) {
      std::uint64_t word = 0;
      std::uint64_t eight = 0;
      std::memcpy(&word, text.data() + at, sizeof word);
      if (!EightDigits(word, eight)) break;
      value = value * 100'000'000 + eight;
      at += 8;
    }
  }
  for (; at < text.size() && IsDigit(text[at]); ++at)
    value = value * 10 + static_cast<std::uint64_t>(text[at] - '0');
  return at;
}

/// Up to 15 digits and nothing else, the usual case; false for any other text.
bool PlainDigits(std::string_view text, long long& value) {
  if (text.empty() || text.size() > 15) return false;
  value = 0;
  for (const char c : text) {
    if (!IsDigit(c)) return false;
    value = value * 10 + (c - '0');
  }
  return true;
}

}  // namespace

double LeadingNumber(std::string_view text) {
  double value = 0;
  if (PlainNumber(text, value)) return value;

  while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
    text.remove_prefix(1);
  const bool negative = !text.empty() && text.front() == '-';
  if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
  // Keeps std::from_chars from reading a second sign, or the words for infinity and not-a-number.
  const bool starts = !text.empty() && (IsDigit(text[0]) || (text.size() > 1 && text[0] == '.' && IsDigit(text[1])));
  if (!starts) return 0;

  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc() || !std::isfinite(value) || value == 0) return 0;
  return negative ? -value : value;
}

bool PlainNumber(std::string_view text, double& value) {
  constexpr std::uint64_t LargestExact = 9'007'199'254'740'992;
  const bool negative = !text.empty() && text.front() == '-';
  if (negative) text.remove_prefix(1);
  if (text.empty() || text.size() > 16 || !IsDigit(text.front())) return false;

  std::uint64_t digits = 0;
  std::size_t at = AddDigits(text, 0, digits);
  std::size_t behind_point = 0;
  if (at < text.size()) {
    if (text[at] != '.') return false;
    const std::size_t first = at + 1;
    at = AddDigits(text, first, digits);
    behind_point = at - first;
  }
  if (at != text.size() || digits > LargestExact) return false;
  // Digits and a power of ten that are doubles both give the nearest double by one division.
  const double magnitude = static_cast<double>(digits) / PowersOfTen[behind_point];
  value = negative && digits != 0 ? -magnitude : magnitude;
  return true;
}

long long LeadingInteger(std::string_view text, long long low, long long high) {
  long long whole = 0;
  if (PlainDigits(text, whole)) return whole < low ? low : whole > high ? high : whole;
  const double value = std::floor(LeadingNumber(text));
  if (value <= static_cast<double>(low)) return low;
  if (value >= static_cast<double>(high)) return high;
  return static_cast<long long>(value);
}

void AppendGeneralNumber(std::string& out, double value) {
  constexpr double FirstLarge = 1e15;
  if (!std::isfinite(value) || value == 0) {
    out += '0';
    return;
  }
  if (std::abs(value) < FirstLarge && value == std::trunc(value)) {
    return AppendInteger(out, static_cast<long long>(value));
  }
  char buffer[64];
  char* const end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 15).ptr;
  std::replace(buffer, end, 'e', 'E');
  out.append(buffer, end);
}

void AppendShortestNumber(std::string& out, double value) {
  AppendShortest(out, value);
}

void AppendShortestNumber(std::string& out, float value) {
  AppendShortest(out, value);
}

std::string GeneralNumber(double value) {
  std::string text;
  AppendGeneralNumber(text, value);
  return text;
}

std::string ShortestNumber(double value) {
  std::string text;
  AppendShortestNumber(text, value);
  return text;
}

std::string ShortestNumber(float value) {
  std::string text;
  AppendShortestNumber(text, value);
  return text;
}

void AppendInteger(std::string& out, long long value) {
  AppendPadded(out, value, 1);
}

std::string PadNumber(long long value, int digits) {
  std::string text;
  AppendPadded(text, value, digits);
  return text;
}

void AppendPadded(std::string& out, long long value, int digits) {
  char buffer[24] = {};
  const char* const end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
  const char* begin = buffer;
  if (*begin == '-') out += *begin++;
  const std::ptrdiff_t count = end - begin;
  if (count < digits) out.append(static_cast<std::size_t>(digits - count), '0');
  out.append(begin, static_cast<std::size_t>(count));
}

}  // namespace walrim
