// Logs made of other logs, and ways the other way round.
#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "records/Route.h"
#include "records/TrackLog.h"

namespace walrim {

/// The points of logs one behind the other, under the header of the first that has one. Each log begins a segment.
[[nodiscard]] TrackLog Joined(std::span<const TrackLog* const> logs);

/// The points in front of one, and those from it on, which begin a segment of a log with another name: "-2" behind it,
/// or the next number that is free among names.
[[nodiscard]] std::pair<TrackLog, TrackLog> CutBefore(const TrackLog& log, std::size_t point,
                                                      const std::vector<TrackLog>& logs);

/// The points from the last to the first, each with its own time. Segments stay segments.
[[nodiscard]] std::vector<TrackPoint> Reversed(std::span<const TrackPoint> points);
/// Each way between two points stays between them.
[[nodiscard]] std::vector<RoutePoint> Reversed(std::span<const RoutePoint> points);

}  // namespace walrim
