#include "walks/Outliers.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <queue>
#include <utility>

#include "geo/Distance.h"

namespace walrim {

namespace {

constexpr double MetresPerKilometre = 1000;
constexpr double MetresPerDegree = 6377397 * std::numbers::pi / 180;
/// Makes the median of the deviations comparable with a standard deviation.
constexpr double ScorePerDeviation = 0.6745;

double Distance_m(const TrackPoint& from, const TrackPoint& to) {
  return SphericalDistance(from.lat_deg, from.lon_deg, to.lat_deg, to.lon_deg) * MetresPerKilometre;
}

struct Velocity {
  double east_m_s = 0;
  double north_m_s = 0;
};

double SecondsBetween(const TrackPoint& from, const TrackPoint& to) {
  return static_cast<double>(*to.time) - static_cast<double>(*from.time);
}

Velocity VelocityOf(const TrackPoint& from, const TrackPoint& to) {
  double lon_deg = to.lon_deg - from.lon_deg;
  if (lon_deg > 180) lon_deg -= 360;
  if (lon_deg < -180) lon_deg += 360;
  const double scale = std::cos((from.lat_deg + to.lat_deg) / 2 * std::numbers::pi / 180);
  const double seconds = SecondsBetween(from, to);
  return {lon_deg * scale * MetresPerDegree / seconds, (to.lat_deg - from.lat_deg) * MetresPerDegree / seconds};
}

/// How the velocity changes at a point.
struct Turn {
  double change_m_s = 0;
  double acceleration_m_s2 = 0;
  double speed_m_s = 0;  ///< of the way to it
};

/// Nothing where the times do not rise.
std::optional<Turn> TurnBetween(const TrackPoint& before, const TrackPoint& point, const TrackPoint& behind) {
  if (!before.time || !point.time || !behind.time) return std::nullopt;
  if (*before.time >= *point.time || *point.time >= *behind.time) return std::nullopt;
  const Velocity in = VelocityOf(before, point);
  const Velocity out = VelocityOf(point, behind);
  const double change_m_s = std::hypot(out.east_m_s - in.east_m_s, out.north_m_s - in.north_m_s);
  return Turn{change_m_s, change_m_s / (SecondsBetween(before, behind) / 2), std::hypot(in.east_m_s, in.north_m_s)};
}

/// 0 of none.
double Median(std::vector<double> values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + std::ssize(values) / 2;
  std::ranges::nth_element(values, middle);
  return *middle;
}

/// The points that are left, and how far each is from the rest.
class Judge {
 public:
  explicit Judge(std::span<const TrackPoint> points) : points_(points) {
    for (std::size_t i = 0; i < points.size(); ++i)
      neighbours_.emplace_back(i - 1, i + 1);
    std::vector<double> accelerations;
    std::vector<double> speeds;
    for (std::size_t i = 0; i < points.size(); ++i) {
      const auto turn = TurnAt(i);
      if (!turn) continue;
      accelerations.push_back(turn->acceleration_m_s2);
      speeds.push_back(turn->speed_m_s);
    }
    usual_speed_m_s_ = Median(std::move(speeds));
    median_ = Median(accelerations);
    for (double& acceleration : accelerations)
      acceleration = std::abs(acceleration - median_);
    deviation_ = Median(std::move(accelerations));
  }

  /// The acceleration of an outlier, in m/s2; nothing for another point.
  [[nodiscard]] std::optional<double> Excess(std::size_t point) const {
    const auto turn = TurnAt(point);
    if (!turn || turn->change_m_s <= MostTurn * usual_speed_m_s_ || Detour_m(point) < UsualError_m) return std::nullopt;
    const double beyond = turn->acceleration_m_s2 - median_;
    if (ScorePerDeviation * beyond <= OutlierScore * deviation_) return std::nullopt;
    return turn->acceleration_m_s2;
  }

  void TakeOut(std::size_t point) {
    const auto [before, behind] = neighbours_[point];
    neighbours_[before].second = behind;
    neighbours_[behind].first = before;
  }
  [[nodiscard]] std::pair<std::size_t, std::size_t> Neighbours(std::size_t point) const { return neighbours_[point]; }

 private:
  [[nodiscard]] bool InSegment(std::size_t point) const {
    const auto [before, behind] = neighbours_[point];
    return point > 0 && behind < points_.size() && !points_[point].new_trk && !points_[behind].new_trk;
  }
  [[nodiscard]] std::optional<Turn> TurnAt(std::size_t point) const {
    if (!InSegment(point)) return std::nullopt;
    const auto [before, behind] = neighbours_[point];
    return TurnBetween(points_[before], points_[point], points_[behind]);
  }
  /// Of a point in a segment: what the way over it is longer than the one past it.
  [[nodiscard]] double Detour_m(std::size_t point) const {
    const auto [before, behind] = neighbours_[point];
    return Distance_m(points_[before], points_[point]) + Distance_m(points_[point], points_[behind]) -
           Distance_m(points_[before], points_[behind]);
  }

  std::span<const TrackPoint> points_;
  std::vector<std::pair<std::size_t, std::size_t>> neighbours_;
  double usual_speed_m_s_ = 0;
  double median_ = 0;  ///< of the accelerations, as the next
  double deviation_ = 0;
};

}  // namespace

std::vector<std::size_t> OutliersOf(std::span<const TrackPoint> points) {
  Judge judge(points);
  using Judged = std::pair<double, std::size_t>;
  std::priority_queue<Judged> worst;
  const auto look = [&](std::size_t point) {
    if (point >= points.size()) return;
    if (const auto excess = judge.Excess(point)) worst.emplace(*excess, point);
  };
  for (std::size_t i = 0; i < points.size(); ++i)
    look(i);
  std::vector<bool> is_out(points.size());
  while (!worst.empty()) {
    const auto [excess, point] = worst.top();
    worst.pop();
    // An entry from before a neighbour went is no longer true.
    if (is_out[point] || judge.Excess(point) != excess) continue;
    is_out[point] = true;
    const auto [before, behind] = judge.Neighbours(point);
    judge.TakeOut(point);
    look(before);
    look(behind);
  }
  std::vector<std::size_t> outliers;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (is_out[i]) outliers.push_back(i);
  }
  return outliers;
}

}  // namespace walrim
