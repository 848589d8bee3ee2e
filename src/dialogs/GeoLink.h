// Links that name a place and no map (RFC 5870), and the places that they name.
//
//   geo-link  = "geo:35.6252,139.2437" ["," height] *(";" name ["=" value]) ["?q=" label]
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "dialogs/MapPoint.h"

namespace walrim {

/// A position on the globe, on WGS84, north and east positive.
struct MapPlace {
  double lat_deg = 0;
  double lon_deg = 0;
  std::optional<double> alt_m;  ///< above the sea
};

/// A number as links have it: no exponent, at most that many decimals, no zeros at their end.
[[nodiscard]] std::string LinkNumber(double number, int decimals);
/// Of degrees: finer than a receiver stores them.
inline constexpr int LinkDecimals = 8;
/// "35.6252,139.2437"
[[nodiscard]] std::string LinkPosition(const MapPlace& place, char separator = ',');

/// The link of a place, with its height where it has one that somebody can have been at.
[[nodiscard]] std::string GeoLink(const MapPlace& place);

/// Its text stands without blanks around it; the point lies wherever the link says, also off the globe. Nothing where
/// the link says more of the position than is known here.
[[nodiscard]] std::optional<MapPoint> PointOfGeoLink(std::string_view text);

}  // namespace walrim
