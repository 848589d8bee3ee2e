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

/// Resets entries [from, to) to what they are before anything is loaded into them.
template <typename Entry>
void Reset(std::vector<Entry>& table, std::size_t from, std::size_t to) {
  std::fill(table.begin() + static_cast<std::ptrdiff_t>(from), table.begin() + static_cast<std::ptrdiff_t>(to),
            Entry{});
}

template <typename Entry>
void Reset(std::vector<Entry>& table) {
  Reset(table, 0, table.size());
}

std::size_t RouteIndex(int route) {
  if (route < 0 || route > MaxRoutes) throw std::out_of_range("no such route");
  return static_cast<std::size_t>(route);
}

std::size_t LogIndex(int log) {
  if (log < 0 || log > MaxTrackLogs) throw std::out_of_range("no such track log");
  return static_cast<std::size_t>(log);
}

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

void FillLink(const D210Entry& link, LinkRecord& record) {
  AssignNumber(record[LinkField::link_class], static_cast<long long>(link.link_class));
  for (std::size_t i = 0; i < SubclassBytes; ++i)
    AssignNumber(record[LinkSubclassField(i)], link.subclass[i]);
  record[LinkField::ident] = link.ident;
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
}

void InternalData::ResetWaypoints(WaypointType type, std::size_t from, std::size_t to) {
  switch (type) {
    case WaypointType::D103:
      return Reset(d103, from, to);
    case WaypointType::D104:
      return Reset(d104, from, to);
    case WaypointType::D107:
      return Reset(d107, from, to);
    case WaypointType::D108:
      return Reset(d108, from, to);
  }
}

void InternalData::ClearRoutes() {
  routes = {};
  MirrorRouteCounters();
  Reset(d201);
  Reset(d202);
  Reset(d210);
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
  Reset(d310);
  Reset(track_points);
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

WaypointRecord InternalData::GetWaypoint(int slot) {
  WaypointRecord record;
  GetWaypoint(slot, record);
  return record;
}

void InternalData::GetWaypoint(int slot, WaypointRecord& record) {
  WaypointToRecord(*this, waypoint_origin.at(static_cast<std::size_t>(slot)), slot, record);
}

RouteHeader InternalData::GetRouteHeader(int route) {
  const std::size_t at = RouteIndex(route);
  RouteHeader record;
  AssignNumber(record[RouteHeaderField::nmbr], d201[at].nmbr);
  if (route_from_d201[at]) {
    d201[at].cmnt.ZerosToBlanks();
    record[RouteHeaderField::cmnt] = d201[at].cmnt.Padded();
  } else {
    record[RouteHeaderField::cmnt] = d202[at].rte_ident;
  }
  AssignNumber(record[RouteHeaderField::rte_wpt_num], routes.RoutePointCount[at]);
  return record;
}

RoutePoint InternalData::GetRoutePoint(int route, int point) {
  RoutePoint record;
  GetRoutePoint(route, point, record);
  return record;
}

void InternalData::GetRoutePoint(int route, int point, RoutePoint& record) {
  const std::size_t link = LinkSlot(route, point);
  GetWaypoint(RoutePointSlot(route, point), record.waypoint);
  if (route_from_d201[RouteIndex(route)]) {
    for (std::string& text : record.link.text)
      text.clear();
  } else {
    FillLink(d210[link], record.link);
  }
}

TrackHeader InternalData::GetTrackHeader(int log) const {
  const std::size_t at = LogIndex(log);
  TrackHeader record;
  AssignNumber(record[TrackHeaderField::trk_pnt_num], tracks.TrackPointCount[at]);
  record[TrackHeaderField::dspl] = TruthText(d310[at].dspl);
  AssignNumber(record[TrackHeaderField::color], d310[at].color);
  record[TrackHeaderField::trk_ident] = d310[at].trk_ident;
  return record;
}

const TrackPointEntry& InternalData::TrackPointAt(int log, int point) const {
  const long long slot = static_cast<long long>(tracks.TrackStart[LogIndex(log)]) + point;
  return track_points.at(static_cast<std::size_t>(slot));
}

void InternalData::GetTrackPoint(int log, int point, TrackPoint& record) const {
  const TrackPointEntry& entry = TrackPointAt(log, point);
  record[TrackPointField::lat] = ShortestNumber(entry.lat_deg);
  record[TrackPointField::lon] = ShortestNumber(entry.lon_deg);
  record[TrackPointField::time] = GeneralNumber(entry.time);
  record[TrackPointField::new_trk] = TruthText(entry.new_trk);
  record[TrackPointField::alt] = ShortestNumber(entry.alt_m);
  record[TrackPointField::dpth] = ShortestNumber(entry.dpth_m);
  record[TrackPointField::leg_dist].clear();
}

void InternalData::SpreadWaypoint(int slot, WaypointType type) {
  const auto at = static_cast<std::size_t>(slot);
  waypoint_origin.at(at) = type;
  // Through the text form, as a file would bring it there; the decoded entry keeps its zero characters.
  WaypointRecord record;
  switch (type) {
    case WaypointType::D103:
      FillRecord(d103[at], record);
      break;
    case WaypointType::D104:
      FillRecord(d104[at], record);
      break;
    case WaypointType::D107:
      FillRecord(d107[at], record);
      break;
    case WaypointType::D108:
      FillRecord(d108[at], record);
      break;
  }
  for (std::size_t i = 0; i < WaypointTypeCount; ++i) {
    const auto other = static_cast<WaypointType>(i);
    if (other != type) RecordToWaypoint(*this, other, slot, record);
  }
}

void InternalData::SpreadRouteHeader(int route, bool has_number) {
  const std::size_t at = RouteIndex(route);
  route_from_d201[at] = has_number;
  if (has_number) {
    FixedText comment = d201[at].cmnt;
    comment.ZerosToBlanks();
    d202[at].rte_ident = comment.Bare();
  } else {
    d201[at].nmbr = static_cast<std::uint8_t>(route);
    d201[at].cmnt.Set(UpperCase(d202[at].rte_ident));
  }
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

void RecordToWaypoint(InternalData& data, WaypointType type, int slot, const WaypointRecord& record) {
  const auto at = static_cast<std::size_t>(slot);
  const WaypointValues values = ValuesOf(record);
  switch (type) {
    case WaypointType::D103:
      return StoreValues(values, data.d103.at(at));
    case WaypointType::D104:
      return StoreValues(values, data.d104.at(at));
    case WaypointType::D107:
      return StoreValues(values, data.d107.at(at));
    case WaypointType::D108:
      return StoreValues(values, data.d108.at(at));
  }
}

void WaypointToRecord(InternalData& data, WaypointType type, int slot, WaypointRecord& record) {
  const auto at = static_cast<std::size_t>(slot);
  const auto normalise_and_fill = [&record](auto& entry) {
    entry.ident.ZerosToBlanks();
    entry.cmnt.ZerosToBlanks();
    FillRecord(entry, record);
  };
  switch (type) {
    case WaypointType::D103:
      return normalise_and_fill(data.d103.at(at));
    case WaypointType::D104:
      return normalise_and_fill(data.d104.at(at));
    case WaypointType::D107:
      return normalise_and_fill(data.d107.at(at));
    case WaypointType::D108:
      data.d108.at(at).state.ZerosToBlanks();
      data.d108.at(at).cc.ZerosToBlanks();
      FillRecord(data.d108.at(at), record);
      // D108 has no dst; every add leaves one in the D104 entry beside it.
      record[WaypointField::dst] = ShortestNumber(data.d104.at(at).dst_m);
      return;
  }
}

}  // namespace walrim
