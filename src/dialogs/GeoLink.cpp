#include <algorithm>
#include <string>

#include "dialogs/MapPointText.h"
#include "text/PercentEscapes.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

using namespace map_point;

namespace {

std::optional<double> TakeSigned(std::string_view& text) {
  const bool negative = Take(text, "-");
  const auto number = TakeNumber(text);
  if (!number) return std::nullopt;
  return negative ? -Degrees(*number) : Degrees(*number);
}

struct Position {
  double lat_deg = 0;
  double lon_deg = 0;
};

std::optional<Position> TakePosition(std::string_view& text) {
  const auto lat = TakeSigned(text);
  if (!lat || !Take(text, ",")) return std::nullopt;
  const auto lon = TakeSigned(text);
  if (!lon) return std::nullopt;
  return Position{*lat, *lon};
}

/// A query's value, whose "+" are blanks.
std::string QueryText(std::string_view value) {
  std::string text(value);
  std::replace(text.begin(), text.end(), '+', ' ');
  return DecodePercentEscapes(text);
}

/// False where a parameter changes what the position means in a way that is not known.
bool ReadParameter(std::string_view parameter, MapPoint& point) {
  constexpr std::string_view DatumKey = "CRS=";
  if (!BeginsWithWord(parameter, DatumKey)) return true;
  const auto datum = DatumOfName(parameter.substr(DatumKey.size()));
  if (datum) point.datum = *datum;
  return datum.has_value();
}

/// Reads a label, or "lat,lon(label)". A link's own 0,0 stands for the latter's position, or for a place to be
/// searched.
bool ReadLabel(const std::string& label, MapPoint& point) {
  std::string_view rest = TrimSpace(label);
  const auto position = TakePosition(rest);
  rest = TrimSpace(rest);
  const bool named = rest.starts_with('(') && rest.back() == ')';
  const bool placeholder = point.lat_deg == 0 && point.lon_deg == 0;
  if (!position || !(rest.empty() || named)) {
    point.ident = WithoutControlCharacters(TrimSpace(label));
    return !placeholder && IsValidUtf8(point.ident);
  }
  const auto inner = PointAt(position->lat_deg, position->lon_deg);
  if (!inner) return false;
  if (!placeholder && (inner->lat_deg != point.lat_deg || inner->lon_deg != point.lon_deg)) return false;
  point.lat_deg = inner->lat_deg;
  point.lon_deg = inner->lon_deg;
  if (named) point.ident = WithoutControlCharacters(rest.substr(1, rest.size() - 2));
  return IsValidUtf8(point.ident);
}

bool ReadQuery(std::string_view query, MapPoint& point) {
  while (!query.empty()) {
    const std::string_view field = TakeUpTo(query, '&');
    if (BeginsWithWord(field, "Q=") && !ReadLabel(QueryText(field.substr(2)), point)) return false;
  }
  return true;
}

}  // namespace

std::optional<MapPoint> PointOfGeoLink(std::string_view text) {
  constexpr std::string_view Scheme = "GEO:";
  if (!BeginsWithWord(text, Scheme)) return std::nullopt;
  const std::string_view link = text.substr(Scheme.size());
  if (std::any_of(link.begin(), link.end(), IsSpace)) return std::nullopt;
  std::string_view query = link;
  std::string_view path = TakeUpTo(query, '?');
  const auto position = TakePosition(path);
  if (!position || (Take(path, ",") && !TakeSigned(path))) return std::nullopt;
  auto point = PointAt(position->lat_deg, position->lon_deg);
  while (point && !path.empty()) {
    if (!Take(path, ";")) return std::nullopt;
    const std::string_view parameter = TakeUntilAny(path, ";");
    if (!ReadParameter(parameter, *point)) return std::nullopt;
  }
  if (!point || !ReadQuery(query, *point)) return std::nullopt;
  return point;
}

}  // namespace walrim
