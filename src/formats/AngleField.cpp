#include "formats/AngleField.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "geo/GeneralLib.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

bool BeginsWithNumber(std::string_view text) {
  text = TrimBlanks(text);
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  if (!text.empty() && text.front() == '.') text.remove_prefix(1);
  return !text.empty() && text.front() >= '0' && text.front() <= '9';
}

bool AllDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
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

void AppendMps(std::string& out, const PlainDms& angle) {
  const int tenths = (angle.hundredths + 5) / 10;
  out.append(angle.degrees).append("/").append(angle.minutes).append("/");
  if (tenths < 100) out += '0';
  out.append(std::to_string(tenths / 10)).append(".");
  out += static_cast<char>('0' + tenths % 10);
}

}  // namespace

std::string_view NotationOfName(std::string_view name) {
  constexpr std::array<std::string_view, 5> names{"D", "DMS", "MPS", "DM", "PAO"};
  for (const std::string_view known : names) {
    if (name == known) return known;
  }
  if (name.size() > 9) return {};
  const std::string upper = UpperCase(TrimBlanks(name));
  const auto* const found = std::find(names.begin(), names.end(), upper);
  return found == names.end() ? std::string_view() : *found;
}

std::optional<double> DegreesOfField(std::string_view text, std::string_view notation) {
  if (notation == "DMS") {
    if (const auto plain = ReadPlainDms(text)) return DegreesOf(*plain);
  }
  if (!BeginsWithNumber(text) || std::count(text.begin(), text.end(), '/') > 2) return std::nullopt;
  return DegreesOfAngle(text, notation);
}

std::optional<GeoPoint> PointOfFields(std::string_view lat, std::string_view lon, std::string_view notation) {
  const auto lat_deg = DegreesOfField(lat, notation);
  const auto lon_deg = DegreesOfField(lon, notation);
  if (!lat_deg || !lon_deg || std::abs(*lat_deg) > 90 || std::abs(*lon_deg) > 180) return std::nullopt;
  return GeoPoint{*lat_deg, *lon_deg, 0};
}

void AppendMpsAngle(std::string& out, std::string_view text, std::string_view notation) {
  const auto plain = notation == "DMS" ? ReadPlainDms(text) : std::nullopt;
  if (!plain) {
    out.append(ConvertAngle(text, notation, "MPS"));
  } else {
    AppendMps(out, *plain);
  }
}

}  // namespace walrim
