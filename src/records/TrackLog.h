// Track logs and their points.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace walrim {

/// The track point types. D300 lacks height and depth.
enum class TrackPointType : std::uint8_t { D300, D301 };

/// Seconds since 1989/12/31 00:00:00 UTC, the receivers' epoch.
using GarminSeconds = std::uint32_t;

struct TrackPoint {
  double lat_deg = 0;  ///< on WGS84, north positive
  double lon_deg = 0;  ///< east positive
  std::optional<GarminSeconds> time;
  std::optional<float> alt_m;  ///< above the sea
  std::optional<float> dpth_m;
  bool new_trk = false;  ///< begins a segment
  bool damaged = false;  ///< came in a damaged frame, or with a position that is none

  friend bool operator==(const TrackPoint&, const TrackPoint&) = default;
};

/// A track log. One that came without a header (D310) is shown on the map in the default colour.
struct TrackLog {
  /// Holds the points that a receiver sent in front of the first one that begins a log. Only the first log may; it is
  /// number 0 where logs are numbered, and no log counts it.
  bool headless = false;
  bool dspl = true;          ///< shown on the receiver's map
  std::uint8_t color = 255;  ///< 255: the default
  std::string trk_ident;     ///< UTF-8
  std::vector<TrackPoint> points;
  bool chosen = true;    ///< as a waypoint's
  bool damaged = false;  ///< its header came in a damaged frame

  friend bool operator==(const TrackLog&, const TrackLog&) = default;
};

}  // namespace walrim
