// Logs with fewer points that go the same way.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "records/TrackLog.h"

namespace walrim {

/// At most so many of a log's points, those that the way bends at most (Douglas-Peucker, on a plane about each
/// stretch). Where segments begin and end points stay; where those alone are too many, the first and the last of the
/// log do where there is room for two, and a segment begins with the first of it that stays. All where there are no
/// more. Takes n log n steps for walks; of ways that would take n times most, such as a long zigzag, the farthest
/// points are looked for in samples, so that none takes more than some hundred steps a point.
[[nodiscard]] std::vector<TrackPoint> Simplified(std::span<const TrackPoint> points, std::size_t most);

}  // namespace walrim
