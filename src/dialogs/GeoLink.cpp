#include "dialogs/GeoLink.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "dialogs/MapPointText.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

using namespace map_point;

namespace {

/// Deeper than every sea, and higher than every balloon. A height beyond them stands for none.
constexpr double DeepestPlace_m = -12000;
constexpr double HighestPlace_m = 50000;

/// False where a parameter changes what the position means in a way that is not known.
bool ReadParameter(std::string_view parameter, MapPoint& point) {
  constexpr std::string_view DatumKey = "CRS=";
  if (!BeginsWithWord(parameter, DatumKey)) return true;
  const auto datum = DatumOfName(parameter.substr(DatumKey.size()));
  if (datum) point.datum = *datum;
  return datum.has_value();
}

/// Reads a label, or "lat,lon(label)"; false where it contradicts the link. A link's own 0,0 stands for the latter's
/// position, or for a place to be searched.
bool ReadLabel(const std::string& label, MapPoint& point) {
  std::string_view rest = TrimSpace(label);
  const auto inner = TakePosition(rest, ",");
  rest = TrimSpace(rest);
  const bool named = rest.starts_with('(') && rest.back() == ')';
  const bool placeholder = point.lat_deg == 0 && point.lon_deg == 0;
  if (!inner || !(rest.empty() || named)) {
    point.ident = WithoutControlCharacters(TrimSpace(label));
    return !placeholder && IsValidUtf8(point.ident);
  }
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

std::string LinkNumber(double number, int decimals) {
  constexpr std::size_t Longest = 320;
  std::array<char, Longest> digits{};
  const auto written = std::to_chars(digits.begin(), digits.end(), number, std::chars_format::fixed, decimals);
  std::string text(digits.begin(), written.ptr);
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

std::string LinkPosition(const MapPlace& place, char separator) {
  return LinkNumber(place.lat_deg, LinkDecimals) + separator + LinkNumber(place.lon_deg, LinkDecimals);
}

std::string GeoLink(const MapPlace& place) {
  std::string link = "geo:" + LinkPosition(place);
  if (place.alt_m && *place.alt_m >= DeepestPlace_m && *place.alt_m <= HighestPlace_m)
    link += "," + LinkNumber(*place.alt_m, 1);
  return link;
}

std::optional<MapPoint> PointOfGeoLink(std::string_view text) {
  constexpr std::string_view Scheme = "GEO:";
  if (!BeginsWithWord(text, Scheme)) return std::nullopt;
  const std::string_view link = text.substr(Scheme.size());
  if (std::any_of(link.begin(), link.end(), IsSpace)) return std::nullopt;
  std::string_view query = link;
  std::string_view path = TakeUpTo(query, '?');
  auto point = TakePosition(path, ",");
  if (!point || (Take(path, ",") && !TakeSigned(path))) return std::nullopt;
  while (!path.empty()) {
    if (!Take(path, ";")) return std::nullopt;
    const std::string_view parameter = TakeUntilAny(path, ";");
    if (!ReadParameter(parameter, *point)) return std::nullopt;
  }
  return ReadQuery(query, *point) ? point : std::nullopt;
}

}  // namespace walrim
