// Numbers as the decimal digits that a text writes, so that rounding down at a digit means that digit.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace walrim {

__extension__ typedef __int128 Int128;
__extension__ typedef unsigned __int128 UInt128;

/// All powers of ten that 128 bits hold.
inline constexpr std::array<UInt128, 39> PowersOfTen = [] {
  std::array<UInt128, 39> powers{1};
  for (std::size_t i = 1; i < powers.size(); ++i)
    powers[i] = powers[i - 1] * 10;
  return powers;
}();
[[nodiscard]] constexpr UInt128 PowerOfTen(int exponent) {
  return PowersOfTen[static_cast<std::size_t>(exponent)];
}

/// Digits kept behind the decimal point; more are cut.
inline constexpr int FractionDigits = 30;
inline constexpr UInt128 FractionUnit = PowerOfTen(FractionDigits);

/// A number by sign and magnitude: whole + fraction / FractionUnit.
struct Decimal {
  bool negative = false;
  double whole = 0;  ///< a whole number, exact below 2^53
  UInt128 fraction = 0;
};

/// The number that text begins with, by the rules of LeadingNumber, times ten to the power of shift.
[[nodiscard]] Decimal ParseDecimal(std::string_view text, int shift = 0);

/// The double nearest to a number.
[[nodiscard]] double NearestDouble(const Decimal& number);

/// The double nearest to numerator / divisor, numerator counted in units of 1 / FractionUnit; divisor is above 0.
[[nodiscard]] double NearestQuotient(Int128 numerator, UInt128 divisor);

/// Plain digits of number * 10^shift, rounded half away from zero to decimals digits behind the point, with at least
/// digits digits before it.
[[nodiscard]] std::string FixedDigits(const Decimal& number, int shift, int digits, int decimals);

}  // namespace walrim
