#include "walks/Simplify.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <queue>

namespace walrim {

namespace {

/// A point on a plane, in degrees of latitude from another one.
struct Offset {
  double x = 0;
  double y = 0;
};

Offset OffsetOf(const TrackPoint& point, const TrackPoint& from) {
  double lon_deg = point.lon_deg - from.lon_deg;
  if (lon_deg > 180) lon_deg -= 360;
  if (lon_deg < -180) lon_deg += 360;
  return {lon_deg * std::cos(from.lat_deg * std::numbers::pi / 180), point.lat_deg - from.lat_deg};
}

/// How far a point is from the line between two others.
double DistanceFromLine(const TrackPoint& point, const TrackPoint& begin, const TrackPoint& end) {
  const Offset at = OffsetOf(point, begin);
  const Offset line = OffsetOf(end, begin);
  const double length2 = line.x * line.x + line.y * line.y;
  const double along = length2 > 0 ? std::clamp((at.x * line.x + at.y * line.y) / length2, 0.0, 1.0) : 0;
  return std::hypot(at.x - along * line.x, at.y - along * line.y);
}

/// A stretch between two points that stay, and the point in it that is farthest from the line between them.
struct Stretch {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::size_t farthest = 0;
  double distance = 0;

  friend bool operator<(const Stretch& a, const Stretch& b) {
    return a.distance != b.distance ? a.distance < b.distance : a.begin > b.begin;
  }
};

Stretch StretchOf(std::span<const TrackPoint> points, std::size_t begin, std::size_t end) {
  Stretch stretch{begin, end, begin + 1, -1};
  for (std::size_t i = begin + 1; i < end; ++i) {
    const double distance = DistanceFromLine(points[i], points[begin], points[end]);
    if (distance > stretch.distance) stretch = {begin, end, i, distance};
  }
  return stretch;
}

/// Which points stay: the two ends, then the farthest of all from the way so far, again and again.
std::vector<bool> Kept(std::span<const TrackPoint> points, std::size_t most) {
  std::vector<bool> kept(points.size());
  if (most > 0) kept.front() = true;
  if (most > 1) kept.back() = true;
  std::priority_queue<Stretch> stretches;
  const auto add = [&](std::size_t begin, std::size_t end) {
    if (end - begin > 1) stretches.push(StretchOf(points, begin, end));
  };
  add(0, points.size() - 1);
  for (std::size_t count = 2; count < most && !stretches.empty(); ++count) {
    const Stretch stretch = stretches.top();
    stretches.pop();
    kept[stretch.farthest] = true;
    add(stretch.begin, stretch.farthest);
    add(stretch.farthest, stretch.end);
  }
  return kept;
}

}  // namespace

std::vector<TrackPoint> Simplified(std::span<const TrackPoint> points, std::size_t most) {
  if (points.size() <= most) return {points.begin(), points.end()};
  const std::vector<bool> kept = Kept(points, most);
  std::vector<TrackPoint> simplified;
  bool begins_segment = false;
  for (std::size_t i = 0; i < points.size(); ++i) {
    begins_segment = begins_segment || points[i].new_trk;
    if (!kept[i]) continue;
    simplified.push_back(points[i]);
    simplified.back().new_trk = begins_segment;
    begins_segment = false;
  }
  return simplified;
}

}  // namespace walrim
