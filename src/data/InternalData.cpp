#include "data/InternalData.h"

#include <algorithm>
#include <stdexcept>

#include "data/FieldValues.h"
#include "data/WaypointValues.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

constexpr auto FirstRoutePoint = static_cast<std::size_t>(RoutePointBase);
constexpr auto SlotCount = static_cast<std::size_t>(WaypointSlots);
constexpr auto RouteTableSize = static_cast<std::size_t>(MaxRoutes) + 1;

bool IsRoutePoint(int route, int point) {
  return route >= 0 && route <= MaxRoutes && point >= 0 && point < MaxRoutePoints;
}

/// A header's number: the given one or the next; AddRejected outside 1..limit.
int HeaderNumber(std::optional<int> given, int count, int limit) {
  const int number = given.value_or(count + 1);
  return number > 0 && number <= limit ? number : AddRejected;
}

D210Entry LinkOf(const LinkRecord& record) {
  D210Entry link;
  link.link_class = WordOf(record[LinkField::link_class]);
  for (std::size_t i = 0; i < SubclassBytes; ++i) {
    const std::string& text = record[LinkSubclassField(i)];
    link.subclass[i] = text.empty() ? NoSubclass[i] : ByteOf(text);
  }
  AssignText(link.ident, record[LinkField::ident]);
  return link;
}

}  // namespace

std::size_t LinkSlot(int route, int point) {
  if (!IsRoutePoint(route, point)) throw std::out_of_range("no such route point");
  return static_cast<std::size_t>(route) * static_cast<std::size_t>(MaxRoutePoints) + static_cast<std::size_t>(point);
}

InternalData::InternalData()
    : d103(SlotCount),
      d104(SlotCount),
      d107(SlotCount),
      d108(SlotCount),
      waypoint_origin(SlotCount, WaypointType::D108),
      d201(RouteTableSize),
      d202(RouteTableSize),
      route_from_d201(RouteTableSize),
      d210(RouteTableSize * static_cast<std::size_t>(MaxRoutePoints)),
      d310(static_cast<std::size_t>(MaxTrackLogs) + 1),
      track_points(static_cast<std::size_t>(MaxTrackPoints)) {}

int InternalData::AddWaypoint(const WaypointRecord& record, std::optional<int> slot) {
  return AddWaypoint(ValuesOf(record), slot);
}

int InternalData::AddWaypoint(const WaypointValues& values, std::optional<int> slot) {
  const int at = slot.value_or(WaypointCount + 1);
  if (at > RoutePointBase && at < WaypointSlots) {
    StoreWaypoint(values, at);
    return at;
  }
  if (at <= 0 || at > MaxWaypoints) return AddRejected;
  StoreWaypoint(values, at);
  WaypointHighWater = std::max(WaypointHighWater, at);
  WaypointCount = WaypointHighWater;
  return at;
}

void InternalData::StoreWaypoint(const WaypointValues& values, int slot) {
  const auto at = static_cast<std::size_t>(slot);
  StoreValues(values, d103[at], d104[at], d107[at], d108[at]);
  AssignUpper(d108[at].ident, values.ident);
  waypoint_origin[at] = WaypointType::D108;
}

int InternalData::AddRouteHeader(const RouteHeader& record, std::optional<int> number) {
  const int route = HeaderNumber(number, routes.RouteCount, MaxRoutes);
  if (route == AddRejected) return AddRejected;
  const auto at = static_cast<std::size_t>(route);
  const std::string& comment = record[RouteHeaderField::cmnt];
  d201[at].nmbr = ByteOf(record[RouteHeaderField::nmbr]);
  d201[at].cmnt.Set(UpperCase(comment));
  AssignUpper(d202[at].rte_ident, comment);
  route_from_d201[at] = false;
  routes.RouteCount = std::max(routes.RouteCount, route);
  routes.RoutePointCount[at] =
      static_cast<int>(LeadingInteger(record[RouteHeaderField::rte_wpt_num], 0, MaxRoutePoints));
  routes.first_point[at] = 0;
  MirrorRouteCounters();
  return route;
}

int InternalData::AddRoutePoint(const RoutePoint& record, int route, int point) {
  return AddRoutePoint(ValuesOf(record.waypoint), LinkOf(record.link), route, point);
}

int InternalData::AddRoutePoint(const WaypointValues& values, const D210Entry& link, int route, int point) {
  if (!IsRoutePoint(route, point)) return AddRejected;
  StoreWaypoint(values, RoutePointSlot(route, point));
  d210[LinkSlot(route, point)] = link;
  return point;
}

int InternalData::AddTrackHeader(const TrackHeader& record, std::optional<int> number) {
  const int log = HeaderNumber(number, tracks.TrackCount, MaxTrackLogs);
  if (log == AddRejected) return AddRejected;
  const auto at = static_cast<std::size_t>(log);
  const std::string& shown = record[TrackHeaderField::dspl];
  d310[at].dspl = shown.empty() || TruthOf(shown);
  d310[at].color = ByteOf(record[TrackHeaderField::color]);
  AssignUpper(d310[at].trk_ident, record[TrackHeaderField::trk_ident]);
  tracks.TrackCount = std::max(tracks.TrackCount, log);
  tracks.TrackStart[at] = tracks.TrackStart[at - 1] + tracks.TrackPointCount[at - 1];
  tracks.TrackPointCount[at] =
      static_cast<int>(LeadingInteger(record[TrackHeaderField::trk_pnt_num], 0, MaxTrackPoints));
  MirrorTrackCounters();
  return log;
}

int InternalData::AddTrackPoint(const TrackPoint& record, int log, int point) {
  TrackPointEntry entry;
  entry.lat_deg = LeadingNumber(record[TrackPointField::lat]);
  entry.lon_deg = LeadingNumber(record[TrackPointField::lon]);
  entry.time = TimeOf(record[TrackPointField::time]);
  entry.new_trk = TruthOf(record[TrackPointField::new_trk]);
  entry.alt_m = SingleOf(record[TrackPointField::alt]);
  entry.dpth_m = SingleOf(record[TrackPointField::dpth]);
  return AddTrackPoint(entry, log, point);
}

int InternalData::AddTrackPoint(const TrackPointEntry& entry, int log, int point) {
  if (log < 1 || log > MaxTrackLogs || point < 0 || point >= MaxTrackPoints) return AddRejected;
  const int slot = tracks.TrackStart[static_cast<std::size_t>(log)] + point;
  if (slot < 0 || slot >= MaxTrackPoints) return AddRejected;
  track_points[static_cast<std::size_t>(slot)] = entry;
  return point;
}

void InternalData::ClearWaypoints(std::string_view type_name) {
  const auto type = type_name.empty() ? std::optional(CurrentWaypointType) : WaypointTypeOfName(type_name);
  if (!type) return;
  ResetWaypoints(*type, 1, FirstRoutePoint);
  WaypointCount = 0;
  WaypointHighWater = 0;
}

void InternalData::ClearAllWaypoints() {
  for (std::size_t i = 0; i < WaypointTypeCount; ++i)
    ClearWaypoints(WaypointTypeName(static_cast<WaypointType>(i)));
  std::fill(waypoint_origin.begin(), waypoint_origin.begin() + RoutePointBase, WaypointType::D108);
  first_missing_waypoint = 0;
  last_missing_waypoint = 0;
}

void InternalData::ResetWaypoints(WaypointType type, std::size_t from, std::size_t to) {
  switch (type) {
    case WaypointType::D103:
      return d103.Reset(from, to);
    case WaypointType::D104:
      return d104.Reset(from, to);
    case WaypointType::D107:
      return d107.Reset(from, to);
    case WaypointType::D108:
      return d108.Reset(from, to);
  }
}

void InternalData::ClearRoutes() {
  routes = {};
  MirrorRouteCounters();
  d201.Reset();
  d202.Reset();
  d210.Reset();
  std::fill(route_from_d201.begin(), route_from_d201.end(), false);
  for (std::size_t i = 0; i < WaypointTypeCount; ++i) {
    ResetWaypoints(static_cast<WaypointType>(i), FirstRoutePoint, SlotCount);
  }
  std::fill(waypoint_origin.begin() + RoutePointBase, waypoint_origin.end(), WaypointType::D108);
  // The route that the cursor names is gone.
  import_cursor.route = 0;
  import_cursor.route_points = 0;
}

void InternalData::ClearTracks() {
  tracks = {};
  MirrorTrackCounters();
  d310.Reset();
  track_points.Reset();
  import_cursor.track_log = 0;
  import_cursor.track_points = 0;
}

void InternalData::Clear(DataKind kind) {
  switch (kind) {
    case DataKind::Waypoint:
      return ClearAllWaypoints();
    case DataKind::Route:
      return ClearRoutes();
    case DataKind::TrackLog:
      return ClearTracks();
  }
}

void InternalData::TakeWaypointSlots(InternalData& other, std::size_t from, std::size_t to) {
  d103.Take(other.d103, from, to);
  d104.Take(other.d104, from, to);
  d107.Take(other.d107, from, to);
  d108.Take(other.d108, from, to);
  std::copy(other.waypoint_origin.begin() + static_cast<std::ptrdiff_t>(from),
            other.waypoint_origin.begin() + static_cast<std::ptrdiff_t>(to),
            waypoint_origin.begin() + static_cast<std::ptrdiff_t>(from));
}

void InternalData::TakeKind(DataKind kind, InternalData& other) {
  Clear(kind);
  switch (kind) {
    case DataKind::Waypoint:
      TakeWaypointSlots(other, 1, FirstRoutePoint);
      WaypointCount = other.WaypointCount;
      WaypointHighWater = other.WaypointHighWater;
      first_missing_waypoint = other.first_missing_waypoint;
      last_missing_waypoint = other.last_missing_waypoint;
      break;
    case DataKind::Route:
      TakeWaypointSlots(other, FirstRoutePoint, SlotCount);
      d201.Take(other.d201, 0, d201.size());
      d202.Take(other.d202, 0, d202.size());
      d210.Take(other.d210, 0, d210.size());
      route_from_d201 = other.route_from_d201;
      routes = other.routes;
      MirrorRouteCounters();
      break;
    case DataKind::TrackLog:
      d310.Take(other.d310, 0, d310.size());
      track_points.Take(other.track_points, 0, track_points.size());
      tracks = other.tracks;
      MirrorTrackCounters();
      break;
  }
  other.Clear(kind);
}

int InternalData::Count(DataKind kind) const {
  switch (kind) {
    case DataKind::Waypoint:
      return WaypointCount;
    case DataKind::Route:
      return routes.RouteCount;
    case DataKind::TrackLog:
      return tracks.TrackCount;
  }
  return 0;
}

}  // namespace walrim
