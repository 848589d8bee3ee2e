// The text form of the data set's records.
#include <stdexcept>

#include "data/FieldValues.h"
#include "data/InternalData.h"
#include "data/WaypointValues.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

std::size_t RouteIndex(int route) {
  if (route < 0 || route > MaxRoutes) throw std::out_of_range("no such route");
  return static_cast<std::size_t>(route);
}

std::size_t LogIndex(int log) {
  if (log < 0 || log > MaxTrackLogs) throw std::out_of_range("no such track log");
  return static_cast<std::size_t>(log);
}

void FillLink(const D210Entry& link, LinkRecord& record) {
  AssignNumber(record[LinkField::link_class], static_cast<long long>(link.link_class));
  for (std::size_t i = 0; i < SubclassBytes; ++i)
    AssignNumber(record[LinkSubclassField(i)], link.subclass[i]);
  record[LinkField::ident] = link.ident;
}

/// Zero characters in an entry's fixed-width texts become blanks.
template <typename Entry>
Entry& Blanked(Entry& entry) {
  entry.ident.ZerosToBlanks();
  entry.cmnt.ZerosToBlanks();
  return entry;
}
D108Entry& Blanked(D108Entry& entry) {
  entry.state.ZerosToBlanks();
  entry.cc.ZerosToBlanks();
  return entry;
}

}  // namespace

WaypointRecord InternalData::GetWaypoint(int slot) {
  WaypointRecord record;
  GetWaypoint(slot, record);
  return record;
}

void InternalData::GetWaypoint(int slot, WaypointRecord& record) {
  WaypointToRecord(*this, waypoint_origin.at(static_cast<std::size_t>(slot)), slot, record);
}

NamedPoint InternalData::GetNamedPoint(int slot) {
  const auto at = static_cast<std::size_t>(slot);
  switch (waypoint_origin.at(at)) {
    case WaypointType::D103:
      return NamedPointOf(Blanked(d103.at(at)));
    case WaypointType::D104:
      return NamedPointOf(Blanked(d104.at(at)));
    case WaypointType::D107:
      return NamedPointOf(Blanked(d107.at(at)));
    case WaypointType::D108:
      return NamedPointOf(Blanked(d108.at(at)));
  }
  return {};
}

NamedPoint InternalData::GetNamedPoint(int route, int point) {
  static_cast<void>(LinkSlot(route, point));
  return GetNamedPoint(RoutePointSlot(route, point));
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
  record[TrackPointField::alt] = MetresText(entry.alt_m);
  record[TrackPointField::dpth] = MetresText(entry.dpth_m);
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
  switch (type) {
    case WaypointType::D103:
      return FillRecord(Blanked(data.d103.at(at)), record);
    case WaypointType::D104:
      return FillRecord(Blanked(data.d104.at(at)), record);
    case WaypointType::D107:
      return FillRecord(Blanked(data.d107.at(at)), record);
    case WaypointType::D108:
      FillRecord(Blanked(data.d108.at(at)), record);
      // D108 has no dst; every add leaves one in the D104 entry beside it.
      record[WaypointField::dst] = ShortestNumber(data.d104.at(at).dst_m);
      return;
  }
}

}  // namespace walrim
