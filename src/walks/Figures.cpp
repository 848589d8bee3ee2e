#include "walks/Figures.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "geo/Distance.h"

namespace walrim {
namespace {

constexpr std::int64_t LongestPause_s = 10;
constexpr double SlowestMove_m_s = 0.5;
constexpr double MetresPerKilometre = 1000;

template <typename Point>
double Distance_m(const Point& from, const Point& to) {
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

void AddHeights(Figures& figures, std::span<const TrackPoint> points) {
  for (const TrackPoint& point : points) {
    if (!point.alt_m) continue;
    const double alt_m = *point.alt_m;
    figures.lowest_m = std::min(alt_m, figures.lowest_m.value_or(alt_m));
    figures.highest_m = std::max(alt_m, figures.highest_m.value_or(alt_m));
  }
}

void NoteSpeed(Figures& figures, const TrackPoint& from, const TrackPoint& to, double distance_m) {
  if (!from.time || !to.time || *to.time <= *from.time) return;
  const double speed_m_s = distance_m / static_cast<double>(*to.time - *from.time);
  figures.fastest_m_s = std::max(speed_m_s, figures.fastest_m_s.value_or(0));
}

/// Adds a part's number to a sum that is known only where every part's is.
template <typename Number>
void Add(std::optional<Number>& sum, const std::optional<Number>& part) {
  if (sum && part) {
    *sum += *part;
  } else {
    sum.reset();
  }
}

template <typename Better>
void Choose(std::optional<double>& best, const std::optional<double>& part, Better better) {
  if (part && (!best || better(*part, *best))) best = part;
}

}  // namespace

Figures FiguresOf(std::span<const TrackPoint> points) {
  Figures figures;
  figures.points = points.size();
  figures.segments = points.empty() ? 0 : 1;
  std::int64_t moving_s = 0;
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (points[i].new_trk) {
      ++figures.segments;
      continue;
    }
    const double leg_m = Distance_m(points[i - 1], points[i]);
    figures.distance_m += leg_m;
    moving_s += MovingSeconds(points[i - 1], points[i], leg_m);
    NoteSpeed(figures, points[i - 1], points[i], leg_m);
  }
  figures.duration_s = DurationOf(points);
  if (figures.duration_s) figures.moving_s = moving_s;
  AddClimbs(figures, points);
  AddHeights(figures, points);
  return figures;
}

Figures TotalOf(std::span<const Figures> parts) {
  Figures total;
  if (parts.empty()) return total;
  total.duration_s = total.moving_s = 0;
  total.ascent_m = total.descent_m = 0;
  for (const Figures& part : parts) {
    total.points += part.points;
    total.segments += part.segments;
    total.distance_m += part.distance_m;
    Add(total.duration_s, part.duration_s);
    Add(total.moving_s, part.moving_s);
    Add(total.ascent_m, part.ascent_m);
    Add(total.descent_m, part.descent_m);
    Choose(total.lowest_m, part.lowest_m, std::less());
    Choose(total.highest_m, part.highest_m, std::greater());
    Choose(total.fastest_m_s, part.fastest_m_s, std::greater());
  }
  return total;
}

std::vector<double> LegsOf(const Route& route) {
  std::vector<double> legs_m;
  for (std::size_t i = 1; i < route.points.size(); ++i)
    legs_m.push_back(Distance_m(route.points[i - 1].waypoint, route.points[i].waypoint));
  return legs_m;
}

}  // namespace walrim
