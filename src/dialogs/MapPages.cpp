#include "dialogs/MapPages.h"

#include <algorithm>
#include <array>

#include "dialogs/MapPointText.h"
#include "text/Scan.h"

namespace walrim {

using namespace map_point;

namespace {

/// Whether a host is that name, by itself or below "www.".
bool IsHost(std::string_view host, std::string_view name) {
  constexpr std::string_view Www = "www.";
  return SameWord(host, name) || (BeginsWithWord(host, Www) && SameWord(host.substr(Www.size()), name));
}

/// A position that is the whole text, but for a blank behind its comma.
std::optional<MapPoint> WholePosition(std::string_view text) {
  const std::string_view whole = text;
  auto point = TakePosition(text, ",");
  if (!point) point = TakePosition(text = whole, ", ");
  return text.empty() ? point : std::nullopt;
}

/// "15/35.709529/139.810713", with more behind another "/" or "&".
std::optional<MapPoint> PointOfView(std::string_view view) {
  if (!TakeNumber(view) || !Take(view, "/")) return std::nullopt;
  const auto point = TakePosition(view, "/");
  return view.empty() || view.starts_with('/') || view.starts_with('&') ? point : std::nullopt;
}

std::string ViewOf(const MapPlace& place) {
  return "15/" + LinkPosition(place, '/');
}

/// The position of two values of the query.
std::optional<MapPoint> PointOfValues(const PageAddress& address, std::string_view lat_key, std::string_view lon_key) {
  return WholePosition(address.Value(lat_key) + "," + address.Value(lon_key));
}

// ---- 地理院地図

bool IsGsi(const PageAddress& address) {
  return SameWord(address.host, "maps.gsi.go.jp");
}

std::optional<MapPoint> ReadGsi(const PageAddress& address) {
  return PointOfView(address.fragment);
}

std::string WriteGsi(const MapPlace& place) {
  return "https://maps.gsi.go.jp/#" + ViewOf(place) + "/";
}

// ---- OpenStreetMap

bool IsOpenStreetMap(const PageAddress& address) {
  return IsHost(address.host, "openstreetmap.org") || IsHost(address.host, "osm.org");
}

/// The mark is what is meant; the map around it may have been moved.
std::optional<MapPoint> ReadOpenStreetMap(const PageAddress& address) {
  if (const auto mark = PointOfValues(address, "mlat", "mlon")) return mark;
  std::string_view fragment = address.fragment;
  return Take(fragment, "map=") ? PointOfView(fragment) : std::nullopt;
}

std::string WriteOpenStreetMap(const MapPlace& place) {
  return "https://www.openstreetmap.org/?mlat=" + LinkNumber(place.lat_deg, LinkDecimals) +
         "&mlon=" + LinkNumber(place.lon_deg, LinkDecimals) + "#map=" + ViewOf(place);
}

// ---- Google

bool IsGoogle(const PageAddress& address) {
  const bool maps = SameWord(address.host, "maps.google.com") || SameWord(address.host, "maps.google.co.jp");
  const bool all = IsHost(address.host, "google.com") || IsHost(address.host, "google.co.jp");
  return maps || (all && (address.path == "/maps" || address.path.starts_with("/maps/")));
}

/// The last "!3d35.709529!4d139.810713" of a path.
std::optional<MapPoint> PointOfMarks(std::string_view path) {
  const std::size_t at = path.rfind("!3d");
  if (at == std::string_view::npos) return std::nullopt;
  path.remove_prefix(at + 3);
  return TakePosition(path, "!4d");
}

/// "/@35.709529,139.810713,15z", the middle of the map.
std::optional<MapPoint> PointOfMiddle(std::string_view path) {
  const std::size_t at = path.find("/@");
  if (at == std::string_view::npos) return std::nullopt;
  path.remove_prefix(at + 2);
  const auto point = TakePosition(path, ",");
  return path.empty() || path.starts_with(',') || path.starts_with('/') ? point : std::nullopt;
}

std::optional<MapPoint> ReadGoogle(const PageAddress& address) {
  for (const std::string_view key : {"query", "q", "ll"}) {
    if (const auto point = WholePosition(address.Value(key))) return point;
  }
  const auto marked = PointOfMarks(address.path);
  return marked ? marked : PointOfMiddle(address.path);
}

std::string WriteGoogle(const MapPlace& place) {
  return "https://www.google.com/maps/search/?api=1&query=" + LinkPosition(place);
}

// ---- Yahoo! JAPAN

bool IsYahoo(const PageAddress& address) {
  return SameWord(address.host, "map.yahoo.co.jp");
}

std::optional<MapPoint> ReadYahoo(const PageAddress& address) {
  return PointOfValues(address, "lat", "lon");
}

constexpr std::array Pages{
    MapPage{"地理院地図", IsGsi, ReadGsi, WriteGsi},
    MapPage{"OpenStreetMap", IsOpenStreetMap, ReadOpenStreetMap, WriteOpenStreetMap},
    MapPage{"Google マップ", IsGoogle, ReadGoogle, WriteGoogle},
    MapPage{"Yahoo!マップ", IsYahoo, ReadYahoo, nullptr},
};

PageAddress AddressOf(std::string_view text) {
  for (const std::string_view scheme : {"https://", "http://"}) {
    if (!BeginsWithWord(text, scheme)) continue;
    text.remove_prefix(scheme.size());
    break;
  }
  PageAddress address;
  address.host = TakeUntilAny(text, "/?#");
  address.path = TakeUntilAny(text, "?#");
  if (Take(text, "?")) address.query = TakeUntilAny(text, "#");
  if (Take(text, "#")) address.fragment = text;
  return address;
}

}  // namespace

std::string PageAddress::Value(std::string_view key) const {
  for (std::string_view rest = query; !rest.empty();) {
    std::string_view value = TakeUpTo(rest, '&');
    if (TakeUpTo(value, '=') == key) return QueryText(value);
  }
  return {};
}

std::span<const MapPage> MapPages() {
  return Pages;
}

std::optional<MapPoint> PointOfMapPage(std::string_view text) {
  if (std::any_of(text.begin(), text.end(), IsSpace)) return std::nullopt;
  const PageAddress address = AddressOf(text);
  const auto* const page =
      std::find_if(Pages.begin(), Pages.end(), [&](const MapPage& row) { return row.is_here(address); });
  return page == Pages.end() ? std::nullopt : page->read(address);
}

}  // namespace walrim
