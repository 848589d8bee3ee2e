#include "walks/Profile.h"

#include <cmath>
#include <cstddef>

#include "geo/Distance.h"

namespace walrim {
namespace {

constexpr double MetresPerKilometre = 1000;

template <typename Point>
double Distance_m(const Point& from, const Point& to) {
  return SphericalDistance(from.lat_deg, from.lon_deg, to.lat_deg, to.lon_deg) * MetresPerKilometre;
}

/// Files can hold numbers that are none.
std::optional<double> KnownHeight(const std::optional<float>& alt_m) {
  return alt_m && std::isfinite(*alt_m) ? std::optional<double>(*alt_m) : std::nullopt;
}

std::optional<double> SpeedBetween(const TrackPoint& from, const TrackPoint& to, double leg_m) {
  if (!from.time || !to.time || *to.time <= *from.time) return std::nullopt;
  return leg_m / static_cast<double>(*to.time - *from.time);
}

}  // namespace

std::vector<ProfilePoint> ProfileOf(std::span<const TrackPoint> points) {
  std::vector<ProfilePoint> profile(points.size());
  std::optional<GarminSeconds> first;
  std::optional<GarminSeconds> latest;
  double distance_m = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const TrackPoint& point = points[i];
    ProfilePoint& at = profile[i];
    at.begins = i == 0 || point.new_trk;
    if (!at.begins) {
      const double leg_m = Distance_m(points[i - 1], point);
      distance_m += leg_m;
      at.speed_m_s = SpeedBetween(points[i - 1], point, leg_m);
    }
    at.distance_m = distance_m;
    at.alt_m = KnownHeight(point.alt_m);
    if (!point.time || (latest && *point.time < *latest)) continue;
    latest = point.time;
    if (!first) first = latest;
    at.time_s = static_cast<double>(*latest - *first);
  }
  return profile;
}

std::vector<ProfilePoint> ProfileOf(const Route& route) {
  std::vector<ProfilePoint> profile(route.points.size());
  for (std::size_t i = 0; i < profile.size(); ++i) {
    const Waypoint& waypoint = route.points[i].waypoint;
    profile[i].begins = i == 0;
    if (i > 0) profile[i].distance_m = profile[i - 1].distance_m + Distance_m(route.points[i - 1].waypoint, waypoint);
    profile[i].alt_m = KnownHeight(waypoint.alt_m);
  }
  return profile;
}

}  // namespace walrim
