// The two datums of the program, and positions on them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace walrim {

enum class Datum : std::uint8_t { Wgs84, Tokyo };

/// "WGS84" or "Tokyo".
[[nodiscard]] std::string_view DatumName(Datum datum);
/// The datum of a name in any case; nothing for another name.
[[nodiscard]] std::optional<Datum> DatumOfName(std::string_view name);

/// A geodetic position: degrees north, degrees east, metres above the ellipsoid.
struct GeoPoint {
  double latitude_deg = 0;
  double longitude_deg = 0;
  double height_m = 0;
};

/// Whether a position lies on the globe: within 90 and 180 degrees.
[[nodiscard]] bool OnGlobe(const GeoPoint& point);

[[nodiscard]] GeoPoint ConvertDatum(const GeoPoint& point, Datum from, Datum to);

}  // namespace walrim
