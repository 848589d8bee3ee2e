// What a log tells of a walk: how far, how long, how high.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "records/TrackLog.h"

namespace walrim {

/// Heights that receivers measure jump; only what differs from the last height that counted by so much counts.
inline constexpr double AscentThreshold_m = 10;

struct Figures {
  double distance_m = 0;                   ///< inside segments; the gaps between them do not count
  std::optional<std::int64_t> duration_s;  ///< from the first time to the last; nothing where time runs backwards
  std::optional<std::int64_t> moving_s;    ///< inside segments, without stops; known where duration_s is
  std::optional<double> ascent_m;          ///< nothing where less than 90 % of the points have a height
  std::optional<double> descent_m;         ///< likewise, above 0
};

/// Of the points of a log. One stops between two points where more than 10 s pass at less than 0.5 m/s. Ascent and
/// descent go on from a segment to the next.
[[nodiscard]] Figures FiguresOf(std::span<const TrackPoint> points);

}  // namespace walrim
