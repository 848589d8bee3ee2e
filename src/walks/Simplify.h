// Logs with fewer points that go the same way.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "records/TrackLog.h"

namespace walrim {

/// At most so many of a log's points, those that the way bends at most (Douglas-Peucker). The first and the last stay
/// where there is room for two, and where a segment begins the first of it that stays does. All where there are no
/// more.
[[nodiscard]] std::vector<TrackPoint> Simplified(std::span<const TrackPoint> points, std::size_t most);

}  // namespace walrim
