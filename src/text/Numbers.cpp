#include "text/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <system_error>

#include "text/Scan.h"

namespace walrim {
namespace {

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

/// Digits with at most one point among them and nothing else: what nearly all numbers are. Digits and a power of ten
/// that are doubles both give the nearest double by one division.
std::optional<double> PlainNumber(std::string_view text) {
  constexpr std::array<double, 16> PowersOfTen{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                               1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  constexpr std::uint64_t LargestExact = 9'007'199'254'740'992;
  if (text.empty() || text.size() > PowersOfTen.size() || !IsDigit(text.front())) return std::nullopt;
  std::uint64_t digits = 0;
  const char* point = nullptr;
  for (const char& c : text) {
    if (IsDigit(c)) {
      digits = digits * 10 + static_cast<std::uint64_t>(c - '0');
    } else if (c == '.' && point == nullptr) {
      point = &c;
    } else {
      return std::nullopt;
    }
  }
  if (digits > LargestExact) return std::nullopt;
  const std::ptrdiff_t behind = point == nullptr ? 0 : &text.back() - point;
  return static_cast<double>(digits) / PowersOfTen[static_cast<std::size_t>(behind)];
}

}  // namespace

double LeadingNumber(std::string_view text) {
  if (const auto plain = PlainNumber(text)) return *plain;
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
    text.remove_prefix(1);
  const bool negative = !text.empty() && text.front() == '-';
  if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
  // Keeps std::from_chars from reading a second sign, or the words for infinity and not-a-number.
  const bool starts = !text.empty() && (IsDigit(text[0]) || (text.size() > 1 && text[0] == '.' && IsDigit(text[1])));
  if (!starts) return 0;

  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc() || !std::isfinite(value) || value == 0) return 0;
  return negative ? -value : value;
}

bool IsNumber(std::string_view text) {
  static_cast<void>(Take(text, '-') || Take(text, '+'));
  std::size_t digits = TakeDigits(text).size();
  if (Take(text, '.')) digits += TakeDigits(text).size();
  if (digits == 0 || text.empty()) return digits > 0;
  if (!Take(text, 'E') && !Take(text, 'e')) return false;
  static_cast<void>(Take(text, '-') || Take(text, '+'));
  return !TakeDigits(text).empty() && text.empty();
}

long long LeadingInteger(std::string_view text, long long low, long long high) {
  long long whole = 0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, whole);
  if (result.ec == std::errc() && result.ptr == end) return std::clamp(whole, low, high);
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
