#include "app/ReadBack.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string_view>
#include <vector>

#include "app/TextImport.h"
#include "formats/WptDates.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

/// Twice what the coarsest notation and the way through the other datum take off a position.
constexpr double PositionTolerance_deg = 5e-5;
/// Receivers' values from here on stand for a time that is not known, as 0 does.
constexpr double FirstUnknownTime = 4294967290.0;

bool SamePosition(double lat_deg, double lon_deg, double other_lat_deg, double other_lon_deg) {
  const double lon_gap = std::abs(lon_deg - other_lon_deg);
  return std::abs(lat_deg - other_lat_deg) < PositionTolerance_deg &&
         (lon_gap < PositionTolerance_deg || std::abs(lon_gap - 360) < PositionTolerance_deg);
}

bool SameText(std::string_view text, std::string_view other) {
  return UpperCase(TrimBlanks(text)) == UpperCase(TrimBlanks(other));
}

/// The text of a comment is kept where it is there; a stamp takes the place of an empty one.
bool SameComment(std::string_view text, std::string_view other, FileFormat format) {
  const bool stamped = format != FileFormat::Standard && TrimBlanks(text).empty();
  return stamped ? FindCreationStamp(other).has_value() : SameText(text, other);
}

bool SameWaypoint(InternalData& data, int slot, InternalData& other, int other_slot, FileFormat format) {
  const NamedPoint point = data.GetNamedPoint(slot);
  const NamedPoint back = other.GetNamedPoint(other_slot);
  if (!SamePosition(point.lat_deg, point.lon_deg, back.lat_deg, back.lon_deg)) return false;
  if (!SameText(point.ident, back.ident) || !SameComment(point.cmnt, back.cmnt, format)) return false;
  if (format != FileFormat::Standard) return true;
  using enum WaypointField;
  const WaypointRecord record = data.GetWaypoint(slot);
  const WaypointRecord record_back = other.GetWaypoint(other_slot);
  for (const WaypointField field : {facility, city, addr, cross_road}) {
    if (!SameText(record[field], record_back[field])) return false;
  }
  return true;
}

bool WaypointsReadBack(InternalData& data, InternalData& back, FileFormat format) {
  if (data.WaypointCount != back.WaypointCount) return false;
  for (int slot = 1; slot <= data.WaypointCount; ++slot) {
    if (!SameWaypoint(data, slot, back, slot, format)) return false;
  }
  return true;
}

bool RouteReadsBack(InternalData& data, InternalData& back, int route, FileFormat format) {
  const auto r = static_cast<std::size_t>(route);
  const RouteCounters& counters = data.mirrored_routes;
  const int points = counters.RoutePointCount[r];
  if (points != back.mirrored_routes.RoutePointCount[r]) return false;
  if (!SameText(data.GetRouteHeader(route)[RouteHeaderField::cmnt], back.GetRouteHeader(route)[RouteHeaderField::cmnt]))
    return false;
  for (int i = 0; i < points; ++i) {
    const int slot = RoutePointSlot(route, counters.first_point[r] + i);
    const int back_slot = RoutePointSlot(route, back.mirrored_routes.first_point[r] + i);
    if (!SameWaypoint(data, slot, back, back_slot, format)) return false;
  }
  return true;
}

bool RoutesReadBack(InternalData& data, InternalData& back, FileFormat format) {
  if (data.mirrored_routes.RouteCount != back.mirrored_routes.RouteCount) return false;
  for (int route = 1; route <= data.mirrored_routes.RouteCount; ++route) {
    if (!RouteReadsBack(data, back, route, format)) return false;
  }
  return true;
}

/// The logs that are written, log 0 where it has points.
std::vector<int> LogsOf(const InternalData& data) {
  std::vector<int> logs;
  for (int log = data.mirrored_tracks.TrackPointCount[0] > 0 ? 0 : 1; log <= data.mirrored_tracks.TrackCount; ++log)
    logs.push_back(log);
  return logs;
}

std::vector<const TrackPointEntry*> PointsOf(const InternalData& data) {
  std::vector<const TrackPointEntry*> points;
  for (const int log : LogsOf(data)) {
    const int count = data.mirrored_tracks.TrackPointCount[static_cast<std::size_t>(log)];
    for (int point = 0; point < count; ++point)
      points.push_back(&data.TrackPointAt(log, point));
  }
  return points;
}

bool SameTime(double time, double other) {
  const auto known = [](double seconds) { return seconds >= FirstUnknownTime ? 0 : seconds; };
  return known(time) == known(other);
}

/// For each point whether it begins a log.
std::vector<bool> BeginningsOf(const InternalData& data) {
  std::vector<bool> begins;
  for (const int log : LogsOf(data)) {
    const int count = data.mirrored_tracks.TrackPointCount[static_cast<std::size_t>(log)];
    for (int point = 0; point < count; ++point)
      begins.push_back(point == 0);
  }
  return begins;
}

/// The segments of a log may come back as logs; two logs as one may not.
bool LogsStayApart(const InternalData& data, const InternalData& back) {
  const std::vector<bool> begins = BeginningsOf(data);
  const std::vector<bool> begins_back = BeginningsOf(back);
  return std::ranges::equal(begins, begins_back, [](bool held, bool read) { return read || !held; });
}

/// Only the standard file has headers of logs; an empty log is nothing but its header.
bool LogsReadBack(const InternalData& data, const InternalData& back, FileFormat format) {
  const std::vector<int> logs = LogsOf(data);
  const std::vector<int> logs_back = LogsOf(back);
  if (format != FileFormat::Standard) {
    for (const int log : logs) {
      if (data.mirrored_tracks.TrackPointCount[static_cast<std::size_t>(log)] == 0) return false;
    }
    return LogsStayApart(data, back);
  }
  if (logs.size() != logs_back.size()) return false;
  for (std::size_t i = 0; i < logs.size(); ++i) {
    const auto at = static_cast<std::size_t>(logs[i]);
    const auto at_back = static_cast<std::size_t>(logs_back[i]);
    if (data.mirrored_tracks.TrackPointCount[at] != back.mirrored_tracks.TrackPointCount[at_back]) return false;
    if (!SameText(data.GetTrackHeader(logs[i])[TrackHeaderField::trk_ident],
                  back.GetTrackHeader(logs_back[i])[TrackHeaderField::trk_ident])) {
      return false;
    }
  }
  return true;
}

bool TracksReadBack(const InternalData& data, const InternalData& back, FileFormat format) {
  const auto points = PointsOf(data);
  const auto points_back = PointsOf(back);
  if (points.size() != points_back.size() || !LogsReadBack(data, back, format)) return false;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const TrackPointEntry& point = *points[i];
    const TrackPointEntry& point_back = *points_back[i];
    if (!SamePosition(point.lat_deg, point.lon_deg, point_back.lat_deg, point_back.lon_deg)) return false;
    if (!SameTime(point.time, point_back.time)) return false;
  }
  return true;
}

}  // namespace

bool ReadsBack(InternalData& data, const std::array<bool, DataKindCount>& kinds, const std::string& text,
               FileFormat format, int utc_offset_hours) {
  const auto back = std::make_unique<InternalData>();
  static_cast<void>(ReadTextInto(*back, text, format, utc_offset_hours));
  return (!kinds[IndexOf(DataKind::Waypoint)] || WaypointsReadBack(data, *back, format)) &&
         (!kinds[IndexOf(DataKind::Route)] || RoutesReadBack(data, *back, format)) &&
         (!kinds[IndexOf(DataKind::TrackLog)] || TracksReadBack(data, *back, format));
}

}  // namespace walrim
