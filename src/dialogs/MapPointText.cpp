#include "dialogs/MapPointText.h"

#include <cmath>
#include <string>

#include "geo/GeneralLib.h"

namespace walrim::map_point {

namespace {

constexpr double MostLatitude = 90;
constexpr double MostLongitude = 180;

}  // namespace

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(Blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

bool Begins(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

bool Take(std::string_view& text, std::string_view expected) {
  if (!Begins(text, expected)) return false;
  text.remove_prefix(expected.size());
  return true;
}

std::string_view TakeDigits(std::string_view& text) {
  const std::string_view digits = text.substr(0, text.find_first_not_of("0123456789"));
  text.remove_prefix(digits.size());
  return digits;
}

std::optional<std::string_view> TakeNumber(std::string_view& text) {
  std::string_view rest = text;
  if (TakeDigits(rest).empty()) return std::nullopt;
  std::string_view behind = rest;
  if (Take(behind, ".") && !TakeDigits(behind).empty()) rest = behind;
  const std::string_view number = text.substr(0, text.size() - rest.size());
  if (number.size() > MostDigits) return std::nullopt;
  text = rest;
  return number;
}

bool HasFraction(std::string_view number) {
  return number.find('.') != std::string_view::npos;
}

double Degrees(std::string_view number) {
  return DegreesOfAngle(number, "D");
}

std::optional<double> DegreesOfParts(std::string_view degrees, std::string_view minutes, std::string_view seconds,
                                     bool seconds_may_be_60) {
  if (HasFraction(degrees) || degrees.size() > MostDigits || Degrees(minutes) >= 60) return std::nullopt;
  const double seconds_value = Degrees(seconds);
  if (seconds_value > 60 || (seconds_value == 60 && !seconds_may_be_60)) return std::nullopt;
  const std::string parts = std::string(degrees).append("/").append(minutes).append("/").append(seconds);
  return DegreesOfAngle(parts, "MPS");
}

std::optional<MapPoint> PointAt(double lat_deg, double lon_deg) {
  if (!(std::abs(lat_deg) <= MostLatitude && std::abs(lon_deg) <= MostLongitude)) return std::nullopt;
  MapPoint point;
  point.lat_deg = lat_deg;
  point.lon_deg = lon_deg;
  return point;
}

}  // namespace walrim::map_point
