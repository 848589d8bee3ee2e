#include "dialogs/MapPointText.h"

#include <algorithm>
#include <string>

#include "geo/AngleNotation.h"
#include "text/PercentEscapes.h"
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

std::optional<double> TakeSigned(std::string_view& text) {
  const bool negative = Take(text, "-");
  const auto number = TakeNumber(text);
  if (!number) return std::nullopt;
  return negative ? -Degrees(*number) : Degrees(*number);
}

std::optional<MapPoint> TakePosition(std::string_view& text, std::string_view separator) {
  const auto lat_deg = TakeSigned(text);
  if (!lat_deg || !Take(text, separator)) return std::nullopt;
  const auto lon_deg = TakeSigned(text);
  return lon_deg ? std::optional(PointAt(*lat_deg, *lon_deg)) : std::nullopt;
}

bool HasFraction(std::string_view number) {
  return number.find('.') != std::string_view::npos;
}

double Degrees(std::string_view number) {
  return DegreesOfAngle(number, AngleNotation::D);
}

std::optional<double> DegreesOfParts(std::string_view degrees, std::string_view minutes, std::string_view seconds) {
  if (HasFraction(degrees) || degrees.size() > MostDigits) return std::nullopt;
  if (Degrees(minutes) >= 60 || Degrees(seconds) >= 60) return std::nullopt;
  const std::string parts = std::string(degrees).append("/").append(minutes).append("/").append(seconds);
  return DegreesOfAngle(parts, AngleNotation::MPS);
}

MapPoint PointAt(double lat_deg, double lon_deg) {
  MapPoint point;
  point.lat_deg = lat_deg;
  point.lon_deg = lon_deg;
  return point;
}

std::string QueryText(std::string_view value) {
  std::string text(value);
  std::replace(text.begin(), text.end(), '+', ' ');
  return DecodePercentEscapes(text);
}

}  // namespace walrim::map_point
