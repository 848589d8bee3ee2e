#include "app/ReadBack.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "formats/WptDates.h"
#include "text/Scan.h"

namespace walrim {

namespace {

/// Twice what the coarsest notation and the way through the other datum take off a position.
constexpr double PositionTolerance_deg = 5e-5;

template <typename Position>
bool SamePosition(const Position& position, const Position& other) {
  const double lon_gap = std::abs(position.lon_deg - other.lon_deg);
  return std::abs(position.lat_deg - other.lat_deg) < PositionTolerance_deg &&
         (lon_gap < PositionTolerance_deg || std::abs(lon_gap - 360) < PositionTolerance_deg);
}

/// Fields of fixed width may be padded with zero characters, which are written as blanks.
std::string Bare(std::string_view text) {
  std::string bare(text);
  std::ranges::replace(bare, '\0', ' ');
  return std::string(TrimBlanks(bare));
}

bool SameText(std::string_view text, std::string_view other) {
  return SameWord(Bare(text), Bare(other));
}

/// The text of a comment is kept where it is there; a stamp takes the place of an empty one.
bool SameComment(std::string_view text, std::string_view other, const Format& format) {
  const bool stamped = !format.holds_all && Bare(text).empty();
  return stamped ? FindCreationStamp(other).has_value() : SameText(text, other);
}

bool SameWaypoint(const Waypoint& point, const Waypoint& back, const Format& format) {
  if (!SamePosition(point, back)) return false;
  if (!SameText(point.ident, back.ident) || !SameComment(point.cmnt, back.cmnt, format)) return false;
  if (!format.holds_all) return true;
  for (const auto field :
       {&WaypointDetails::facility, &WaypointDetails::city, &WaypointDetails::addr, &WaypointDetails::cross_road}) {
    if (!SameText((*point.details).*field, (*back.details).*field)) return false;
  }
  return true;
}

bool WaypointsReadBack(const DataSet& data, const DataSet& back, const Format& format) {
  return std::ranges::equal(data.Waypoints(), back.Waypoints(), [&format](const Waypoint& held, const Waypoint& read) {
    return SameWaypoint(held, read, format);
  });
}

bool SameRoute(const Route& route, const Route& back, const Format& format) {
  const auto same_point = [&format](const RoutePoint& held, const RoutePoint& read) {
    return SameWaypoint(held.waypoint, read.waypoint, format);
  };
  return SameText(route.cmnt, back.cmnt) && std::ranges::equal(route.points, back.points, same_point);
}

bool RoutesReadBack(const DataSet& data, const DataSet& back, const Format& format) {
  return std::ranges::equal(data.Routes(), back.Routes(),
                            [&format](const Route& held, const Route& read) { return SameRoute(held, read, format); });
}

struct PlacedPoint {
  const TrackPoint* point;
  bool begins_log;
};

std::vector<PlacedPoint> PointsOf(const DataSet& data) {
  std::vector<PlacedPoint> points;
  points.reserve(data.TrackPointCount());
  for (const TrackLog& log : data.Logs()) {
    for (const TrackPoint& point : log.points)
      points.push_back({&point, &point == &log.points.front()});
  }
  return points;
}

/// The segments of a log may come back as logs; two logs as one may not.
bool SamePoint(const PlacedPoint& held, const PlacedPoint& read) {
  return SamePosition(*held.point, *read.point) && held.point->time == read.point->time &&
         (read.begins_log || !held.begins_log);
}

/// An empty log is nothing but its header, which some formats lack.
bool LogsReadBack(const DataSet& data, const DataSet& back, const Format& format) {
  if (!format.holds_all) {
    return std::ranges::none_of(data.Logs(), [](const TrackLog& log) { return log.points.empty(); });
  }
  return std::ranges::equal(data.Logs(), back.Logs(), [](const TrackLog& held, const TrackLog& read) {
    return held.points.size() == read.points.size() && SameText(held.trk_ident, read.trk_ident);
  });
}

bool TracksReadBack(const DataSet& data, const DataSet& back, const Format& format) {
  return std::ranges::equal(PointsOf(data), PointsOf(back), SamePoint) && LogsReadBack(data, back, format);
}

}  // namespace

bool ReadsBack(const DataSet& data, const DataSet& back, const DataKinds& kinds, const Format& format) {
  return (!kinds[IndexOf(DataKind::Waypoint)] || WaypointsReadBack(data, back, format)) &&
         (!kinds[IndexOf(DataKind::Route)] || RoutesReadBack(data, back, format)) &&
         (!kinds[IndexOf(DataKind::TrackLog)] || TracksReadBack(data, back, format));
}

bool SameRecord(const Waypoint& one, const Waypoint& other) {
  return SameWaypoint(one, other, FormatOf(FormatId::Standard));
}

bool SameRecord(const Route& one, const Route& other) {
  return SameRoute(one, other, FormatOf(FormatId::Standard));
}

bool SameRecord(const TrackLog& one, const TrackLog& other) {
  return SameText(one.trk_ident, other.trk_ident) &&
         std::ranges::equal(one.points, other.points, [](const TrackPoint& point, const TrackPoint& same) {
           return SamePosition(point, same) && point.time == same.time;
         });
}

}  // namespace walrim
