// What a log tells of a walk: how far, how long, how high.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "records/Route.h"
#include "records/TrackLog.h"

namespace walrim {

/// Heights that receivers measure jump; only what differs from the last height that counted by so much counts.
inline constexpr double AscentThreshold_m = 10;

struct Figures {
  std::size_t points = 0;
  std::size_t segments = 0;                ///< of at least one point
  double distance_m = 0;                   ///< inside segments; the gaps between them do not count
  std::optional<std::int64_t> duration_s;  ///< from the first time to the last; nothing where time runs backwards
  std::optional<std::int64_t> moving_s;    ///< inside segments, without stops; known where duration_s is
  std::optional<double> ascent_m;          ///< nothing where less than 90 % of the points have a height
  std::optional<double> descent_m;         ///< likewise, above 0
  std::optional<double> lowest_m;          ///< nothing where no point has a height
  std::optional<double> highest_m;
  std::optional<double> fastest_m_s;  ///< between two points of a segment; nothing where no time passes between any

  /// Over all the time, stops and gaps included; nothing where none has passed.
  [[nodiscard]] std::optional<double> AverageSpeed_m_s() const { return SpeedOver(duration_s); }
  [[nodiscard]] std::optional<double> MovingSpeed_m_s() const { return SpeedOver(moving_s); }

 private:
  [[nodiscard]] std::optional<double> SpeedOver(std::optional<std::int64_t> seconds) const {
    if (!seconds || *seconds == 0) return std::nullopt;
    return distance_m / static_cast<double>(*seconds);
  }
};

/// Of the points of a log. One stops between two points where more than 10 s pass at less than 0.5 m/s. Ascent and
/// descent go on from a segment to the next.
[[nodiscard]] Figures FiguresOf(std::span<const TrackPoint> points);

/// Of several logs together: sums, and the lowest, highest and fastest of all. A sum is known where each part's is.
[[nodiscard]] Figures TotalOf(std::span<const Figures> parts);

/// The lengths of a route's legs in metres, from point to point in their order.
[[nodiscard]] std::vector<double> LegsOf(const Route& route);

}  // namespace walrim
