// One point in a text that was copied from a map.
//
//   text      = script | geo-link | page | [datum-word] pair [datum-word]
//   script    = statements with one "point" among them: point oid=.. gid=.. pos=35/37/30.7,139/14/37.3 str=..;
//   geo-link  = "geo:35.6252,139.2437" ...           GeoLink.h
//   page      = address of a map's page               MapPages.h
//   pair      = angle [","] angle     latitude first, unless the letters say otherwise
//   angle     = 35.6252 | 35°37'30.7" | 35.37.30.7 | 35度37分30.7秒, with a sign or N, S, E, W, 北緯, 南緯, 東経, 西経
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "geo/Datum.h"

namespace walrim {

/// Longer texts hold no point.
inline constexpr std::size_t LongestMapPointText = 64U * 1024U;

/// A point as its text gives it: decimal degrees on datum, north and east positive, within 90 and 180 degrees.
struct MapPoint {
  double lat_deg = 0;
  double lon_deg = 0;
  Datum datum = Datum::Wgs84;
  std::string ident;
  std::string cmnt;
};

/// The point of a UTF-8 text; nothing where the text holds none, more than one, or anything that is not understood.
/// A script's point is on the Tokyo datum unless its georef or theme names WGS84, any other on WGS84 unless the text
/// says otherwise. Never throws but for lack of memory.
[[nodiscard]] std::optional<MapPoint> RecognizeMapPoint(std::string_view text);

/// Whether a text that is no point would be one, did its position not lie beyond 90 or 180 degrees.
[[nodiscard]] bool LeadsOffGlobe(std::string_view text);

}  // namespace walrim
