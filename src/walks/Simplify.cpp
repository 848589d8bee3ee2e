#include "walks/Simplify.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <queue>

namespace walrim {

namespace {

/// A point on the plane about another one, in degrees of latitude.
struct Offset {
  double x = 0;
  double y = 0;
};

/// The straight way between two points.
class Line {
 public:
  Line(const TrackPoint& begin, const TrackPoint& end)
      : begin_(begin),
        lon_scale_(std::cos((begin.lat_deg + end.lat_deg) / 2 * std::numbers::pi / 180)),
        end_(OffsetOf(end)),
        length2_(end_.x * end_.x + end_.y * end_.y) {}

  [[nodiscard]] double DistanceOf(const TrackPoint& point) const {
    const Offset at = OffsetOf(point);
    const double along = length2_ > 0 ? std::clamp((at.x * end_.x + at.y * end_.y) / length2_, 0.0, 1.0) : 0;
    return std::hypot(at.x - along * end_.x, at.y - along * end_.y);
  }

 private:
  [[nodiscard]] Offset OffsetOf(const TrackPoint& point) const {
    double lon_deg = point.lon_deg - begin_.lon_deg;
    if (lon_deg > 180) lon_deg -= 360;
    if (lon_deg < -180) lon_deg += 360;
    return {lon_deg * lon_scale_, point.lat_deg - begin_.lat_deg};
  }

  const TrackPoint& begin_;
  double lon_scale_;
  Offset end_;
  double length2_;
};

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
  const Line line(points[begin], points[end]);
  Stretch stretch{begin, end, begin + 1, -1};
  for (std::size_t i = begin + 1; i < end; ++i) {
    const double distance = line.DistanceOf(points[i]);
    if (distance > stretch.distance) stretch = {begin, end, i, distance};
  }
  return stretch;
}

/// The first and the last points of segments; those of the log alone where there is no room for all.
std::vector<std::size_t> Ends(std::span<const TrackPoint> points, std::size_t most) {
  const std::size_t last = points.size() - 1;
  std::vector<std::size_t> ends;
  for (std::size_t i = 0; i <= last; ++i) {
    if (i == 0 || i == last || points[i].new_trk || points[i + 1].new_trk) ends.push_back(i);
  }
  if (ends.size() > most) ends = {0, last};
  ends.resize(std::min(ends.size(), most));
  return ends;
}

/// Which points stay: the ends, then the farthest of all from the way so far, again and again.
std::vector<bool> Kept(std::span<const TrackPoint> points, std::size_t most) {
  std::vector<bool> kept(points.size());
  std::priority_queue<Stretch> stretches;
  const auto add = [&](std::size_t begin, std::size_t end) {
    if (end - begin > 1) stretches.push(StretchOf(points, begin, end));
  };
  const std::vector<std::size_t> ends = Ends(points, most);
  for (std::size_t i = 0; i < ends.size(); ++i) {
    kept[ends[i]] = true;
    if (i > 0) add(ends[i - 1], ends[i]);
  }
  for (std::size_t count = ends.size(); count < most && !stretches.empty(); ++count) {
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
