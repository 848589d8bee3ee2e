// The pages of maps: the addresses that hold a position, and the addresses of a place.
//
//   https://maps.gsi.go.jp/#15/35.709529/139.810713/...
//   https://www.openstreetmap.org/?mlat=35.709529&mlon=139.810713#map=15/35.709529/139.810713
//   https://www.openstreetmap.org/#map=15/35.709529/139.810713
//   https://www.google.com/maps/search/?api=1&query=35.709529,139.810713
//   https://www.google.com/maps/@35.709529,139.810713,15z
//   https://www.google.com/maps/place/.../@...!3d35.709529!4d139.810713     the place, not the middle of the map
//   https://map.yahoo.co.jp/place?lat=35.709529&lon=139.810713&zoom=16
//
// "http://" may stand in the place of "https://", or nothing; what else an address holds is passed over.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "dialogs/GeoLink.h"
#include "dialogs/MapPoint.h"

namespace walrim {

/// An address taken apart. The views point into its text.
struct PageAddress {
  std::string_view host;
  std::string_view path;
  std::string_view query;
  std::string_view fragment;

  /// The first value of a key in the query, decoded; empty where there is none.
  [[nodiscard]] std::string Value(std::string_view key) const;
};

struct MapPage {
  std::string_view name;  ///< of the map, in Japanese
  bool (*is_here)(const PageAddress& address);
  std::optional<MapPoint> (*read)(const PageAddress& address);
  /// The address of a place; null for a map that is only read from.
  std::string (*write)(const MapPlace& place);
};

[[nodiscard]] std::span<const MapPage> MapPages();

/// Its text stands without blanks around it; the point lies wherever the address says, also off the globe. Nothing for
/// the address of another page, and for one of a map's that holds no position.
[[nodiscard]] std::optional<MapPoint> PointOfMapPage(std::string_view text);

}  // namespace walrim
