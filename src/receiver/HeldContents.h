// What a receiver holds, apart from how its model lays it out. Texts are UTF-8, positions degrees on WGS84.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace walrim {

/// How the receiver says that a height or a depth is not known.
inline constexpr float UnknownHeight = 1.0e25F;

using HeldSubclass = std::array<std::uint8_t, 18>;
/// The subclass that stands for none.
inline constexpr HeldSubclass NoHeldSubclass{0,   0,   0,   0,   0,   0,   255, 255, 255,
                                             255, 255, 255, 255, 255, 255, 255, 255, 255};

struct HeldWaypoint {
  std::string ident;
  double lat_deg = 0;
  double lon_deg = 0;
  std::string cmnt;
  std::optional<std::uint16_t> smbl;  ///< none: what the layout has for a plain waypoint
  std::uint8_t dspl = 0;
  float dst_m = 0;
  std::optional<std::uint8_t> color;  ///< none: the layout's default colour
  std::uint8_t wpt_class = 0;
  std::uint8_t attr = 96;
  HeldSubclass subclass = NoHeldSubclass;
  float alt_m = UnknownHeight;
  float dpth_m = UnknownHeight;
  float dist_m = 0;
  std::string state;
  std::string country;
  std::string facility;
  std::string city;
  std::string addr;
  std::string cross_road;
};

struct HeldRoutePoint {
  HeldWaypoint waypoint;
  std::uint16_t link_class = 0;
  HeldSubclass link_subclass = NoHeldSubclass;
  std::string link_ident;
};

struct HeldRoute {
  std::uint8_t nmbr = 0;
  std::string cmnt;  ///< where routes have no comment it is their identifier
  std::vector<HeldRoutePoint> points;
};

struct HeldTrackPoint {
  double lat_deg = 0;
  double lon_deg = 0;
  std::uint32_t time_s = 0;  ///< UTC, since 1989/12/31 00:00:00
  bool new_trk = false;
  float alt_m = UnknownHeight;
  float dpth_m = UnknownHeight;
};

struct HeldTrackLog {
  bool dspl = true;
  std::uint8_t color = 255;
  std::string trk_ident;
  std::vector<HeldTrackPoint> points;
};

struct HeldContents {
  std::vector<HeldWaypoint> waypoints;
  std::vector<HeldRoute> routes;
  std::vector<HeldTrackLog> track_logs;
};

}  // namespace walrim
