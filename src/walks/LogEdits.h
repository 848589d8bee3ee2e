// Logs made of other logs, and ways the other way round.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "records/Route.h"
#include "records/TrackLog.h"

namespace walrim {

/// The points of logs one behind the other, under the header of the first that has one. Each log begins a segment.
[[nodiscard]] TrackLog Joined(std::span<const TrackLog* const> logs);

/// A log cut in front of points, whose indices rise from 1: each part behind the first begins a segment of a log with
/// another name, "-2" behind it, or the next number that is free among the names of logs.
[[nodiscard]] std::vector<TrackLog> CutBefore(const TrackLog& log, std::span<const std::size_t> points,
                                              const std::vector<TrackLog>& logs);

// Points without a time stay with those in front of them.

/// The points that are the first of another day than the one before, in a zone so many hours ahead of UTC.
[[nodiscard]] std::vector<std::size_t> DayBreaks(std::span<const TrackPoint> points, int utc_offset_hours);
/// The points in front of which so many seconds or more have passed.
[[nodiscard]] std::vector<std::size_t> GapBreaks(std::span<const TrackPoint> points, std::int64_t seconds);

/// The points from the last to the first, each with its own time. Segments stay segments.
[[nodiscard]] std::vector<TrackPoint> Reversed(std::span<const TrackPoint> points);
/// Each way between two points stays between them.
[[nodiscard]] std::vector<RoutePoint> Reversed(std::span<const RoutePoint> points);

}  // namespace walrim
