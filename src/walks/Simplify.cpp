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

/// Finds the farthest points. A way whose bends split off one point each time would take as many steps as it has points
/// squared; once many have been taken, no more than a sample of each stretch is looked at.
class FarthestPoints {
 public:
  explicit FarthestPoints(std::span<const TrackPoint> points)
      : points_(points), steps_left_(StepsPerPoint * points.size()) {}

  [[nodiscard]] Stretch Of(std::size_t begin, std::size_t end) {
    const std::size_t inner = end - begin - 1;
    const std::size_t looked_at = std::min(inner, std::max(steps_left_, Sample));
    steps_left_ -= std::min(steps_left_, looked_at);
    const Line line(points_[begin], points_[end]);
    Stretch stretch{begin, end, begin + 1, -1};
    for (std::size_t k = 0; k < looked_at; ++k) {
      const std::size_t i = begin + 1 + k * inner / looked_at;
      const double distance = line.DistanceOf(points_[i]);
      if (distance > stretch.distance) stretch = {begin, end, i, distance};
    }
    return stretch;
  }

 private:
  /// Walks need some twenty: twice the logarithm of their points.
  static constexpr std::size_t StepsPerPoint = 200;
  static constexpr std::size_t Sample = 64;

  std::span<const TrackPoint> points_;
  std::size_t steps_left_;
};

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
  FarthestPoints farthest(points);
  const auto add = [&](std::size_t begin, std::size_t end) {
    if (end - begin > 1) stretches.push(farthest.Of(begin, end));
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
