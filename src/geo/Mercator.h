// The plane that web maps are drawn on: Mercator's projection of the sphere, with the world as a square.
#pragma once

#include <algorithm>
#include <limits>

namespace walrim {

/// The square ends here, north and south.
inline constexpr double MercatorEdge_deg = 85.05112877980659;

/// 0 to 1 each: x eastward from 180 degrees west, y southward from the northern edge. A line that goes on over 180
/// degrees has x beyond.
struct MercatorPoint {
  double x = 0;
  double y = 0;

  friend bool operator==(const MercatorPoint&, const MercatorPoint&) = default;
};

/// Of a position in degrees; north and south of the edges it lies on them.
[[nodiscard]] MercatorPoint MercatorOf(double lat_deg, double lon_deg);
[[nodiscard]] double LatitudeOfMercator(double y);
/// -180 to 180, whatever x is.
[[nodiscard]] double LongitudeOfMercator(double x);

/// Metres on the ground, at a latitude, of the square's whole width.
[[nodiscard]] double MetresOfMercator(double lat_deg);

/// A part of the plane. Touches nothing at first.
struct MercatorBox {
  double west = std::numeric_limits<double>::infinity();
  double north = std::numeric_limits<double>::infinity();
  double east = -std::numeric_limits<double>::infinity();
  double south = -std::numeric_limits<double>::infinity();

  [[nodiscard]] bool Empty() const { return east < west; }
  void Add(MercatorPoint point) { Add({point.x, point.y, point.x, point.y}); }
  void Add(const MercatorBox& box) {
    west = std::min(west, box.west);
    north = std::min(north, box.north);
    east = std::max(east, box.east);
    south = std::max(south, box.south);
  }
  /// The borders count.
  [[nodiscard]] bool Touches(const MercatorBox& box) const {
    return west <= box.east && box.west <= east && north <= box.south && box.north <= south;
  }
  [[nodiscard]] bool Holds(const MercatorBox& box) const {
    return west <= box.west && box.east <= east && north <= box.north && box.south <= south;
  }
  [[nodiscard]] MercatorBox Moved(double x) const { return {west + x, north, east + x, south}; }
  [[nodiscard]] MercatorPoint Middle() const { return {(west + east) / 2, (north + south) / 2}; }
};

}  // namespace walrim
