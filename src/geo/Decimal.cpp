#include "geo/Decimal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "text/Numbers.h"
#include "text/Scan.h"

namespace walrim {
namespace {

/// Whole numbers of more digits are taken from their double.
constexpr int MostWholeDigits = 18;
/// Exponents beyond this make every number too large or nothing; it is kept small enough for sums.
constexpr std::int64_t LargestExponent = 1'000'000'000'000'000;

std::size_t DigitsFrom(std::string_view text, std::size_t at) {
  text.remove_prefix(at);
  return TakeDigits(text).size();
}

/// A number's text taken apart: digits with the point after the first whole_digits of them, times 10^exponent.
class DigitText {
 public:
  explicit DigitText(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
      text.remove_prefix(1);
    negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
    text_ = text;
    whole_digits = static_cast<std::int64_t>(DigitsFrom(text, 0));
    auto end = static_cast<std::size_t>(whole_digits);
    count = whole_digits;
    if (end < text.size() && text[end] == '.') {
      const std::size_t behind = DigitsFrom(text, end + 1);
      count += static_cast<std::int64_t>(behind);
      end += 1 + behind;
    }
    if (count > 0) ReadExponent(end);
  }

  [[nodiscard]] unsigned Digit(std::int64_t i) const {
    const auto at = static_cast<std::size_t>(i < whole_digits ? i : i + 1);
    return static_cast<unsigned>(text_[at] - '0');
  }

  bool negative = false;
  std::int64_t whole_digits = 0;
  std::int64_t count = 0;
  std::int64_t exponent = 0;

 private:
  void ReadExponent(std::size_t at) {
    if (at >= text_.size() || (text_[at] != 'E' && text_[at] != 'e')) return;
    ++at;
    const bool below = at < text_.size() && text_[at] == '-';
    if (below || (at < text_.size() && text_[at] == '+')) ++at;
    for (; at < text_.size() && IsDigit(text_[at]); ++at) {
      if (exponent < LargestExponent) exponent = exponent * 10 + (text_[at] - '0');
    }
    if (below) exponent = -exponent;
  }

  std::string_view text_;
};

std::string DigitsOf(UInt128 value) {
  constexpr int ChunkDigits = 18;
  constexpr std::uint64_t Chunk = 1'000'000'000'000'000'000;
  std::array<char, 40> buffer;
  char* at = buffer.data() + buffer.size();
  // Division of 128 bits is slow: it splits off many digits at a time.
  for (; value >= Chunk; value /= Chunk) {
    auto low = static_cast<std::uint64_t>(value % Chunk);
    for (int i = 0; i < ChunkDigits; ++i, low /= 10)
      *--at = static_cast<char>('0' + low % 10);
  }
  auto high = static_cast<std::uint64_t>(value);
  do {
    *--at = static_cast<char>('0' + high % 10);
    high /= 10;
  } while (high != 0);
  return std::string(at, buffer.data() + buffer.size());
}

std::string DigitsOf(double whole) {
  char buffer[400];
  char* const end = std::to_chars(buffer, buffer + sizeof buffer, whole, std::chars_format::fixed, 0).ptr;
  return std::string(buffer, end);
}

void PadFront(std::string& digits, int width) {
  const auto wanted = static_cast<std::size_t>(width);
  if (digits.size() < wanted) digits.insert(0, wanted - digits.size(), '0');
}

}  // namespace

Decimal ParseDecimal(std::string_view text, int shift) {
  const DigitText number(text);
  std::int64_t first = 0;
  while (first < number.count && number.Digit(first) == 0)
    ++first;
  if (first == number.count) return {};

  Decimal result;
  result.negative = number.negative;
  const std::int64_t point = number.whole_digits + number.exponent + shift;
  if (point - first > MostWholeDigits) {
    result.whole = std::trunc(std::abs(LeadingNumber(text)) * std::pow(10.0, shift));
    return result;
  }
  const auto digit = [&](std::int64_t i) { return i < first || i >= number.count ? 0U : number.Digit(i); };
  const auto digits = [&](std::int64_t from, std::int64_t to) {
    std::uint64_t value = 0;
    for (std::int64_t i = from; i < to; ++i)
      value = value * 10 + digit(i);
    return value;
  };
  const std::uint64_t whole = digits(first, point);
  // Only digits that are there are looked at; zeros follow them.
  const auto written = std::clamp<std::int64_t>(number.count - point, 0, FractionDigits);
  const auto upper = std::min<std::int64_t>(written, MostWholeDigits);
  result.fraction = digits(point, point + upper) * PowerOfTen(static_cast<int>(FractionDigits - upper)) +
                    digits(point + upper, point + written) * PowerOfTen(static_cast<int>(FractionDigits - written));
  result.whole = static_cast<double>(whole);
  result.negative = number.negative && (whole != 0 || result.fraction != 0);
  return result;
}

double NearestDouble(const Decimal& number) {
  double value = number.whole;
  if (number.fraction != 0) {
    std::string behind = DigitsOf(number.fraction);
    PadFront(behind, FractionDigits);
    value = LeadingNumber(DigitsOf(number.whole) + "." + behind);
  }
  return number.negative ? -value : value;
}

double NearestQuotient(Int128 numerator, UInt128 divisor) {
  const bool negative = numerator < 0;
  const UInt128 magnitude = negative ? UInt128{0} - static_cast<UInt128>(numerator) : static_cast<UInt128>(numerator);
  // With few decimals both are whole numbers that are doubles, and one division gives the nearest.
  constexpr int FewDecimals = 4;
  constexpr UInt128 LargestExact = UInt128{1} << 53;
  constexpr UInt128 Unit = PowerOfTen(FractionDigits - FewDecimals);
  const UInt128 scaled = magnitude / Unit;
  const UInt128 scaled_divisor = divisor * PowerOfTen(FewDecimals);
  if (scaled * Unit == magnitude && scaled <= LargestExact && scaled_divisor <= LargestExact) {
    const double value = static_cast<double>(scaled) / static_cast<double>(scaled_divisor);
    return negative ? -value : value;
  }
  const UInt128 quotient = magnitude / divisor;
  std::string digits = DigitsOf(quotient);
  PadFront(digits, FractionDigits + 1);
  digits.insert(digits.size() - static_cast<std::size_t>(FractionDigits), 1, '.');
  // What the division cut off decides between two doubles only where the digits lie exactly between them.
  if (magnitude % divisor != 0) digits += '1';
  const double value = LeadingNumber(digits);
  return negative ? -value : value;
}

std::string FixedDigits(const Decimal& number, int shift, int digits, int decimals) {
  const int places = shift + decimals;
  std::string text;
  bool zero = false;
  if (number.whole < static_cast<double>(PowerOfTen(MostWholeDigits))) {
    const UInt128 scaled_fraction = number.fraction * PowerOfTen(places);
    UInt128 scaled = static_cast<UInt128>(number.whole) * PowerOfTen(places) + scaled_fraction / FractionUnit;
    if (scaled_fraction % FractionUnit * 2 >= FractionUnit) ++scaled;
    zero = scaled == 0;
    text = DigitsOf(scaled);
  } else {
    text = DigitsOf(number.whole).append(static_cast<std::size_t>(places), '0');
  }
  PadFront(text, digits + decimals);
  if (decimals > 0) text.insert(text.size() - static_cast<std::size_t>(decimals), 1, '.');
  if (number.negative && !zero) text.insert(0, 1, '-');
  return text;
}

}  // namespace walrim
