#include "walks/Figures.h"

#include <algorithm>
#include <cmath>

#include "geo/Distance.h"

namespace walrim {
namespace {

constexpr std::int64_t LongestPause_s = 10;
constexpr double SlowestMove_m_s = 0.5;
constexpr double MetresPerKilometre = 1000;

double Distance_m(const TrackPoint& from, const TrackPoint& to) {
  return SphericalDistance(from.lat_deg, from.lon_deg, to.lat_deg, to.lon_deg) * MetresPerKilometre;
}

/// Seconds of an interval in which one moved; 0 where that is not known.
std::int64_t MovingSeconds(const TrackPoint& from, const TrackPoint& to, double distance_m) {
  if (!from.time || !to.time || *to.time < *from.time) return 0;
  const auto seconds = static_cast<std::int64_t>(*to.time - *from.time);
  const bool stopped = seconds > LongestPause_s && distance_m < SlowestMove_m_s * static_cast<double>(seconds);
  return stopped ? 0 : seconds;
}

std::optional<std::int64_t> DurationOf(std::span<const TrackPoint> points) {
  std::optional<std::int64_t> first;
  std::optional<std::int64_t> last;
  for (const TrackPoint& point : points) {
    if (!point.time) continue;
    if (!first) first = *point.time;
    last = *point.time;
  }
  if (!first || *last < *first) return std::nullopt;
  return *last - *first;
}

void AddClimbs(Figures& figures, std::span<const TrackPoint> points) {
  const auto known = std::ranges::count_if(points, [](const TrackPoint& point) { return point.alt_m.has_value(); });
  if (points.empty() || known * 10 < std::ssize(points) * 9) return;
  double ascent_m = 0;
  double descent_m = 0;
  std::optional<double> anchor_m;
  for (const TrackPoint& point : points) {
    if (!point.alt_m) continue;
    const double climb_m = *point.alt_m - anchor_m.value_or(*point.alt_m);
    if (anchor_m && std::abs(climb_m) < AscentThreshold_m) continue;
    (climb_m > 0 ? ascent_m : descent_m) += std::abs(climb_m);
    anchor_m = *point.alt_m;
  }
  figures.ascent_m = ascent_m;
  figures.descent_m = descent_m;
}

}  // namespace

Figures FiguresOf(std::span<const TrackPoint> points) {
  Figures figures;
  std::int64_t moving_s = 0;
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (points[i].new_trk) continue;
    const double leg_m = Distance_m(points[i - 1], points[i]);
    figures.distance_m += leg_m;
    moving_s += MovingSeconds(points[i - 1], points[i], leg_m);
  }
  figures.duration_s = DurationOf(points);
  if (figures.duration_s) figures.moving_s = moving_s;
  AddClimbs(figures, points);
  return figures;
}

}  // namespace walrim
