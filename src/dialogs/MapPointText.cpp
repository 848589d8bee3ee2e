#include "dialogs/MapPointText.h"

#include <string>

#include "geo/AngleNotation.h"
#include "text/Scan.h"

namespace walrim::map_point {

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
  return DegreesOfAngle(number, AngleNotation::D);
}

std::optional<double> DegreesOfParts(std::string_view degrees, std::string_view minutes, std::string_view seconds,
                                     bool seconds_may_be_60) {
  if (HasFraction(degrees) || degrees.size() > MostDigits || Degrees(minutes) >= 60) return std::nullopt;
  const double seconds_value = Degrees(seconds);
  if (seconds_value > 60 || (seconds_value == 60 && !seconds_may_be_60)) return std::nullopt;
  const std::string parts = std::string(degrees).append("/").append(minutes).append("/").append(seconds);
  return DegreesOfAngle(parts, AngleNotation::MPS);
}

std::optional<MapPoint> PointAt(double lat_deg, double lon_deg) {
  if (!OnGlobe({lat_deg, lon_deg, 0})) return std::nullopt;
  MapPoint point;
  point.lat_deg = lat_deg;
  point.lon_deg = lon_deg;
  return point;
}

}  // namespace walrim::map_point
