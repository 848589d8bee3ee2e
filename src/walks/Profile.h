// A way as a curve: how high, and how fast, after how far and how long.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "records/Route.h"
#include "records/TrackLog.h"

namespace walrim {

struct ProfilePoint {
  double distance_m = 0;            ///< from the first point on, inside segments
  std::optional<double> time_s;     ///< from the first time on; nothing where time is unknown, or runs backwards
  std::optional<double> alt_m;      ///< above the sea
  std::optional<double> speed_m_s;  ///< from the point before, in the same segment
  bool begins = false;              ///< a segment
};

/// One for each point.
[[nodiscard]] std::vector<ProfilePoint> ProfileOf(std::span<const TrackPoint> points);
/// Routes have no times.
[[nodiscard]] std::vector<ProfilePoint> ProfileOf(const Route& route);

}  // namespace walrim
