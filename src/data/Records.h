// The records of the data set in their text form: lists of texts named by the standard file's column titles.
// Numbers are decimal, positions decimal degrees on WGS84, texts UTF-8.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace walrim {

/// The kinds of data; the number indexes every per-kind control.
enum class DataKind : int { Waypoint = 0, Route = 1, TrackLog = 2 };
inline constexpr std::size_t DataKindCount = 3;
inline constexpr std::array<DataKind, DataKindCount> AllDataKinds{DataKind::Waypoint, DataKind::Route,
                                                                  DataKind::TrackLog};
[[nodiscard]] constexpr std::size_t IndexOf(DataKind kind) {
  return static_cast<std::size_t>(kind);
}
/// The name of a kind in the window, in messages and in status texts.
[[nodiscard]] constexpr std::string_view DataKindName(DataKind kind) {
  constexpr std::array<std::string_view, DataKindCount> names{"Waypoint", "Route", "TrackLog"};
  return names[IndexOf(kind)];
}

/// A list of texts, one for each field of Field (whose last enumerator is Count).
template <typename Field>
struct TextRecord {
  static constexpr std::size_t FieldCount = static_cast<std::size_t>(Field::Count);
  std::array<std::string, FieldCount> text;

  std::string& operator[](Field field) { return text[static_cast<std::size_t>(field)]; }
  const std::string& operator[](Field field) const { return text[static_cast<std::size_t>(field)]; }
  friend bool operator==(const TextRecord&, const TextRecord&) = default;
};

inline constexpr std::size_t SubclassBytes = 18;

/// Fields of a waypoint in the order of the standard file's columns.
/// smbl_notes and dspl_notes are the readable names of the codes, written for people and ignored on reading.
enum class WaypointField : std::size_t {
  ident,
  lat,
  lon,
  cmnt,
  smbl,
  smbl_notes,
  dspl,
  dspl_notes,
  dst,
  color,
  wpt_class,
  attr,
  subclass,  ///< the first of SubclassBytes fields
  alt = subclass + SubclassBytes,
  dpth,
  dist,
  state,
  cc,
  idents,
  comment,
  facility,
  city,
  addr,
  cross_road,
  Count
};
/// Field of subclass byte i, 0..17.
[[nodiscard]] constexpr WaypointField SubclassField(std::size_t i) {
  return static_cast<WaypointField>(static_cast<std::size_t>(WaypointField::subclass) + i);
}
using WaypointRecord = TextRecord<WaypointField>;

enum class RouteHeaderField : std::size_t { nmbr, cmnt, rte_wpt_num, Count };
using RouteHeader = TextRecord<RouteHeaderField>;

/// Fields of the link that follows a route point.
enum class LinkField : std::size_t { link_class, subclass, ident = subclass + SubclassBytes, Count };
[[nodiscard]] constexpr LinkField LinkSubclassField(std::size_t i) {
  return static_cast<LinkField>(static_cast<std::size_t>(LinkField::subclass) + i);
}
using LinkRecord = TextRecord<LinkField>;

/// A route point: the waypoint fields, titled "(wp)...", and the link fields, titled "(link)...".
struct RoutePoint {
  WaypointRecord waypoint;
  LinkRecord link;
  friend bool operator==(const RoutePoint&, const RoutePoint&) = default;
};

enum class TrackHeaderField : std::size_t { trk_pnt_num, dspl, color, trk_ident, Count };
using TrackHeader = TextRecord<TrackHeaderField>;

/// Fields of a track point. Inside the data set time is the receiver's seconds in decimal; new_trk is "TRUE" or
/// "FALSE"; leg_dist is the distance in metres from the previous point, written for people and ignored on reading.
enum class TrackPointField : std::size_t { lat, lon, time, new_trk, alt, dpth, leg_dist, Count };
using TrackPoint = TextRecord<TrackPointField>;

}  // namespace walrim
