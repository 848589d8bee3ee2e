#include "geo/AngleNotation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

#include "geo/Decimal.h"
#include "text/Numbers.h"
#include "text/Scan.h"

namespace walrim {
namespace {

constexpr std::array Notations{AngleNotation::D, AngleNotation::DM, AngleNotation::DMS, AngleNotation::MPS,
                               AngleNotation::PAO};

struct Angle {
  Decimal degrees;
  Decimal minutes;
  Decimal seconds;
};

Decimal FromUnits(UInt128 units) {
  const UInt128 whole = units / FractionUnit;
  return {false, static_cast<double>(whole), units % FractionUnit};
}

/// Reads one number whose fraction holds the minutes in parts of minute_base and behind them the seconds in parts of
/// second_base.
Angle ReadPacked(std::string_view value, unsigned minute_base, unsigned second_base) {
  const Decimal number = ParseDecimal(value);
  Angle angle;
  angle.degrees.negative = number.negative;
  angle.degrees.whole = number.whole;
  UInt128 fraction = number.fraction;
  if (number.negative && fraction != 0) {
    angle.degrees.whole += 1;
    fraction = FractionUnit - fraction;
  }
  const UInt128 minutes = fraction * minute_base;
  const UInt128 whole_minutes = minutes / FractionUnit;
  angle.minutes.whole = static_cast<double>(whole_minutes);
  angle.seconds = FromUnits(minutes % FractionUnit * second_base);
  return angle;
}

Angle ReadParts(std::string_view value, int second_shift) {
  std::array<std::string_view, 3> parts;
  std::size_t part = 0;
  while (true) {
    const std::size_t slash = value.find('/');
    parts.at(part) = value.substr(0, slash);
    if (slash == std::string_view::npos) break;
    value.remove_prefix(slash + 1);
    ++part;
  }
  return {ParseDecimal(parts[0]), ParseDecimal(parts[1]), ParseDecimal(parts[2], second_shift)};
}

Angle PartsOf(std::string_view value, AngleNotation notation) {
  switch (notation) {
    case AngleNotation::D:
      return ReadPacked(value, 60, 60);
    case AngleNotation::DM:
      return ReadPacked(value, 100, 60);
    case AngleNotation::DMS:
      return ReadPacked(value, 100, 100);
    case AngleNotation::MPS:
      return ReadParts(value, 0);
    case AngleNotation::PAO:
      return ReadParts(value, -3);
  }
  return {};
}

/// number * factor in units of 1 / FractionUnit; nothing where the sum of three of them might not fit.
std::optional<Int128> Units(const Decimal& number, unsigned factor) {
  constexpr double MostSeconds = 4.0e7;
  if (number.whole * factor > MostSeconds) return std::nullopt;
  const UInt128 units = (static_cast<UInt128>(number.whole) * FractionUnit + number.fraction) * factor;
  return number.negative ? -static_cast<Int128>(units) : static_cast<Int128>(units);
}

double DegreesOf(const Angle& angle) {
  const std::optional<Int128> degrees = Units(angle.degrees, 3600);
  const std::optional<Int128> minutes = Units(angle.minutes, 60);
  const std::optional<Int128> seconds = Units(angle.seconds, 1);
  if (degrees && minutes && seconds) return NearestQuotient(*degrees + *minutes + *seconds, 3600);
  const double sum =
      NearestDouble(angle.degrees) + NearestDouble(angle.minutes) / 60 + NearestDouble(angle.seconds) / 3600;
  return std::isfinite(sum) ? sum : 0;
}

bool BeginsWithNumber(std::string_view text) {
  text = TrimBlanks(text);
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  Take(text, '.');
  return !text.empty() && IsDigit(text.front());
}

int Number(std::string_view digits) {
  int number = 0;
  for (const char c : digits)
    number = number * 10 + (c - '0');
  return number;
}

/// An angle as this program writes it in "DMS": one to three digits, the point, mmssss.
struct PlainDms {
  std::string_view degrees;
  std::string_view minutes;
  int hundredths = 0;  ///< of a second
};

/// Nearly every angle of a text is such a one; it needs no arithmetic on decimals.
std::optional<PlainDms> ReadPlainDms(std::string_view text) {
  constexpr std::size_t FractionSize = 6;
  const std::size_t point = text.find('.');
  if (point < 1 || point > 3 || text.size() != point + 1 + FractionSize) return std::nullopt;
  const std::string_view degrees = text.substr(0, point);
  const std::string_view fraction = text.substr(point + 1);
  if (!AllDigits(degrees) || !AllDigits(fraction) || (point > 1 && degrees.front() == '0')) return std::nullopt;
  return PlainDms{degrees, fraction.substr(0, 2), Number(fraction.substr(2))};
}

double DegreesOf(const PlainDms& angle) {
  constexpr int HundredthsPerMinute = 6000;
  constexpr int MinutesPerDegree = 60;
  const int minutes = Number(angle.degrees) * MinutesPerDegree + Number(angle.minutes);
  return static_cast<double>(minutes * HundredthsPerMinute + angle.hundredths) /
         (HundredthsPerMinute * MinutesPerDegree);
}

/// An angle as scripts have it, d/mm/ss.s with all its digits. It needs no arithmetic on decimals either.
std::optional<double> ReadPlainMps(std::string_view text) {
  constexpr std::size_t MostDegrees = 3;
  constexpr std::size_t MinutesAndSeconds = 8;
  constexpr double TenthsPerDegree = 36000;
  const std::size_t slash = text.find('/');
  if (slash < 1 || slash > MostDegrees || text.size() != slash + MinutesAndSeconds) return std::nullopt;
  const std::string_view degrees = text.substr(0, slash);
  const std::string_view minutes = text.substr(slash + 1, 2);
  const std::string_view seconds = text.substr(slash + 4, 2);
  const char tenth = text.back();
  if (text[slash + 3] != '/' || text[slash + 6] != '.' || !IsDigit(tenth)) return std::nullopt;
  if (!AllDigits(degrees) || !AllDigits(minutes) || !AllDigits(seconds)) return std::nullopt;
  const int tenths = (Number(degrees) * 60 + Number(minutes)) * 600 + Number(seconds) * 10 + (tenth - '0');
  return tenths / TenthsPerDegree;
}

void AppendMps(std::string& out, const PlainDms& angle) {
  const int tenths = (angle.hundredths + 5) / 10;
  out.append(angle.degrees).append("/").append(angle.minutes).append("/");
  if (tenths < 100) out += '0';
  out.append(std::to_string(tenths / 10)).append(".");
  out += static_cast<char>('0' + tenths % 10);
}

}  // namespace

std::string_view AngleNotationName(AngleNotation notation) {
  switch (notation) {
    case AngleNotation::D:
      return "D";
    case AngleNotation::DM:
      return "DM";
    case AngleNotation::DMS:
      return "DMS";
    case AngleNotation::MPS:
      return "MPS";
    case AngleNotation::PAO:
      return "PAO";
  }
  return {};
}

std::optional<AngleNotation> AngleNotationOfName(std::string_view name) {
  name = TrimBlanks(name);
  const auto* const found = std::find_if(Notations.begin(), Notations.end(), [name](AngleNotation notation) {
    return SameWord(name, AngleNotationName(notation));
  });
  return found == Notations.end() ? std::nullopt : std::optional(*found);
}

void AppendConvertedAngle(std::string& out, std::string_view value, AngleNotation from, AngleNotation to) {
  if (to == AngleNotation::D) return AppendGeneralNumber(out, DegreesOfAngle(value, from));
  if (from == AngleNotation::DMS && to == AngleNotation::MPS) {
    if (const auto plain = ReadPlainDms(value)) return AppendMps(out, *plain);
  }
  const Angle angle = PartsOf(value, from);
  // Seconds that round up to 60 stay 60: nothing is carried.
  const auto append = [&](std::string_view separator, int shift, int digits, int decimals) {
    AppendGeneralNumber(out, NearestDouble(angle.degrees));
    const std::string_view behind_minutes = separator == "/" ? "/" : "";
    out.append(separator).append(FixedDigits(angle.minutes, 0, 2, 0)).append(behind_minutes);
    out.append(FixedDigits(angle.seconds, shift, digits, decimals));
  };
  switch (to) {
    case AngleNotation::DMS:
      return append(".", 2, 4, 0);
    case AngleNotation::MPS:
      return append("/", 0, 2, 1);
    case AngleNotation::PAO:
      return append("/", 3, 5, 0);
    case AngleNotation::D:
    case AngleNotation::DM:
      return;
  }
}

double DegreesOfAngle(std::string_view value, AngleNotation notation) {
  return notation == AngleNotation::D ? LeadingNumber(value) : DegreesOf(PartsOf(value, notation));
}

std::optional<double> ReadAngle(std::string_view text, AngleNotation notation) {
  if (notation == AngleNotation::DMS) {
    if (const auto plain = ReadPlainDms(text)) return DegreesOf(*plain);
  }
  if (notation == AngleNotation::MPS) {
    if (const auto plain = ReadPlainMps(text)) return plain;
  }
  const bool too_many_parts = notation != AngleNotation::D && std::count(text.begin(), text.end(), '/') > 2;
  if (!BeginsWithNumber(text) || too_many_parts) return std::nullopt;
  // What is read as 0 although other digits stand before its exponent fitted no number.
  const bool zero = LeadingNumber(text) == 0;
  if (zero && text.find_first_of("123456789") < text.find_first_of("eE/")) return std::nullopt;
  return DegreesOfAngle(text, notation);
}

std::optional<GeoPoint> ReadPosition(std::string_view lat, std::string_view lon, AngleNotation notation) {
  const auto lat_deg = ReadAngle(lat, notation);
  const auto lon_deg = ReadAngle(lon, notation);
  if (!lat_deg || !lon_deg) return std::nullopt;
  const GeoPoint point{*lat_deg, *lon_deg, 0};
  return OnGlobe(point) ? std::optional(point) : std::nullopt;
}

void AppendAngle(std::string& out, double degrees, AngleNotation notation) {
  if (notation == AngleNotation::D) return AppendGeneralNumber(out, degrees);
  AppendConvertedAngle(out, ShortestNumber(degrees), AngleNotation::D, notation);
}

}  // namespace walrim
