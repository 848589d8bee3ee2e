// The one data set of the program, of fixed capacity.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/DeviceEntries.h"
#include "data/PagedTable.h"
#include "data/Records.h"

namespace walrim {

struct WaypointValues;

inline constexpr int MaxWaypoints = 1999;    ///< user waypoints, slots 1..1999
inline constexpr int RoutePointBase = 2000;  ///< point p of route r lies in slot 2000 + 100 r + p
inline constexpr int WaypointSlots = 10000;
inline constexpr int MaxRoutes = 79;          ///< routes 1..79
inline constexpr int MaxRoutePoints = 100;    ///< points 0..99 of one route
inline constexpr int MaxTrackLogs = 1536;     ///< track logs 1..1536
inline constexpr int MaxTrackPoints = 30000;  ///< slots 0..29999, shared by all track logs
inline constexpr int AddRejected = -9999;     ///< an add that was refused; nothing was changed

/// Slot of a route's point; no check.
[[nodiscard]] constexpr int RoutePointSlot(int route, int point) {
  return RoutePointBase + 100 * route + point;
}

/// Counters of the routes. Points of route r are numbered first_point[r] .. first_point[r] + RoutePointCount[r] - 1.
struct RouteCounters {
  int RouteCount = 0;  ///< highest route number in use
  std::array<int, MaxRoutes + 1> RoutePointCount{};
  std::array<int, MaxRoutes + 1> first_point{};  ///< 1 for a route from a receiver, 0 for one from a file
};

/// Counters of the track logs. Log 0 holds points that came before the first one that begins a log.
struct TrackCounters {
  int TrackCount = 0;  ///< highest track log number in use
  std::array<int, MaxTrackLogs + 1> TrackPointCount{};
  std::array<int, MaxTrackLogs + 1> TrackStart{};  ///< slot of the log's first point
};

/// Where the reader of a file stands. 0: no header read yet; AddRejected: the last header was refused, its points are
/// refused with it.
struct ImportCursor {
  std::int32_t route = 0;
  std::int32_t route_points = 0;
  std::int32_t track_log = 0;
  std::int32_t track_points = 0;
};

/// A waypoint's name, comment and position.
struct NamedPoint {
  std::string ident;
  std::string cmnt;
  double lat_deg = 0;
  double lon_deg = 0;
};

/// The data set. Holds every waypoint at once in the four waypoint layouts, so that it can be sent to a receiver of
/// any of them. Lives as long as the program; starts empty. Indices outside a store throw std::out_of_range.
class InternalData {
 public:
  InternalData();

  // ---- Adding records in their text form. Each returns the slot or number used, or AddRejected; no message.

  /// Stores a waypoint in all four layouts, its ident in upper case. Without a slot: the one after WaypointCount. A
  /// slot above RoutePointBase is a route point's. Refused: slots not above 0, 2000 itself, above 9999, and the user
  /// area when it is full.
  int AddWaypoint(const WaypointRecord& record, std::optional<int> slot = std::nullopt);
  int AddWaypoint(const WaypointValues& values, std::optional<int> slot = std::nullopt);
  /// Stores a route header; without a number: the one after RouteCount. rte_wpt_num becomes the point count (kept
  /// within 0..100), the first point's number 0.
  int AddRouteHeader(const RouteHeader& record, std::optional<int> number = std::nullopt);
  /// Stores point 0..99 of route 0..79 with its link. Returns the point.
  int AddRoutePoint(const RoutePoint& record, int route, int point);
  int AddRoutePoint(const WaypointValues& values, const D210Entry& link, int route, int point);
  /// Stores a track header; without a number: the one after TrackCount. The log starts where the one before it ends.
  int AddTrackHeader(const TrackHeader& record, std::optional<int> number = std::nullopt);
  /// Stores point number 0.. of track log 1..1536. Returns the point.
  int AddTrackPoint(const TrackPoint& record, int log, int point);
  int AddTrackPoint(const TrackPointEntry& entry, int log, int point);

  // ---- Clearing

  /// Resets slots 1..1999 of the named type's layout (an empty name: the type in force) and the waypoint counters.
  void ClearWaypoints(std::string_view type_name = {});
  /// ClearWaypoints for all four layouts.
  void ClearAllWaypoints();
  /// Resets all routes: counters, headers, links, the route points in every waypoint layout, and the import cursor's
  /// part, as ClearTracks does for the track logs.
  void ClearRoutes();
  void ClearTracks();
  /// Clears one kind wholly.
  void Clear(DataKind kind);

  /// Takes one kind out of another data set, in place of what this one held of it. The other one is left without it.
  void TakeKind(DataKind kind, InternalData& other);

  // ---- Text form

  /// Text form of slot (see waypoint_origin). Zero characters in fixed-width texts become blanks, in the entry too.
  [[nodiscard]] WaypointRecord GetWaypoint(int slot);
  void GetWaypoint(int slot, WaypointRecord& record);
  /// The part of it that texts without the other fields write.
  [[nodiscard]] NamedPoint GetNamedPoint(int slot);
  [[nodiscard]] NamedPoint GetNamedPoint(int route, int point);
  [[nodiscard]] RouteHeader GetRouteHeader(int route);
  [[nodiscard]] RoutePoint GetRoutePoint(int route, int point);
  void GetRoutePoint(int route, int point, RoutePoint& record);
  [[nodiscard]] TrackHeader GetTrackHeader(int log) const;
  /// leg_dist is left to the writer, which knows the datum of what it writes.
  void GetTrackPoint(int log, int point, TrackPoint& record) const;
  /// Point number 0.. of a log, counted from the log's start.
  [[nodiscard]] const TrackPointEntry& TrackPointAt(int log, int point) const;

  // ---- After a receiver's record was decoded into one layout

  /// Brings a waypoint that was decoded into the layout of type into the other three, and notes where it came from.
  void SpreadWaypoint(int slot, WaypointType type);
  /// Brings a route header decoded as D201 (has_number) or D202 into the other layout.
  void SpreadRouteHeader(int route, bool has_number);

  // ---- Counts

  /// Copies the working counters over the mirrored ones, which export and copy read.
  void MirrorRouteCounters() { mirrored_routes = routes; }
  void MirrorTrackCounters() { mirrored_tracks = tracks; }
  /// Records of a kind as the window counts them after an import: waypoints, routes or track logs.
  [[nodiscard]] int Count(DataKind kind) const;

  int WaypointCount = 0;      ///< highest user waypoint slot in use
  int WaypointHighWater = 0;  ///< highest slot that an add has set since the last clear
  /// User waypoints from this slot on, up to the last one of a download, were announced but never came; 0 for none.
  int first_missing_waypoint = 0;
  int last_missing_waypoint = 0;
  [[nodiscard]] bool IsMissingWaypoint(int slot) const {
    return first_missing_waypoint > 0 && slot >= first_missing_waypoint && slot <= last_missing_waypoint;
  }
  RouteCounters routes;
  TrackCounters tracks;
  RouteCounters mirrored_routes;
  TrackCounters mirrored_tracks;
  ImportCursor import_cursor;
  /// The waypoint type in force: that of the receiver identified last, D108 before.
  WaypointType CurrentWaypointType = WaypointType::D108;

  // ---- Tables, indexed by slot, route, route * 100 + point, log, track point slot. Each checks its index.
  PagedTable<D103Entry> d103;
  PagedTable<D104Entry> d104;
  PagedTable<D107Entry> d107;
  PagedTable<D108Entry> d108;
  /// The layout whose text form a slot has: the receiver's for a downloaded waypoint, D108 for one from a file.
  std::vector<WaypointType> waypoint_origin;
  PagedTable<D201Entry> d201;
  PagedTable<D202Entry> d202;
  /// Per route: true where the header came as D201 (then its comment is D201's, and its points have no links).
  std::vector<bool> route_from_d201;
  PagedTable<D210Entry> d210;
  PagedTable<D310Entry> d310;
  PagedTable<TrackPointEntry> track_points;

 private:
  void TakeWaypointSlots(InternalData& other, std::size_t from, std::size_t to);
  /// Puts a waypoint into all four layouts. slot must be one.
  void StoreWaypoint(const WaypointValues& values, int slot);
  void ResetWaypoints(WaypointType type, std::size_t from, std::size_t to);
};

/// Slot of a link in InternalData::d210; throws std::out_of_range for a route outside 0..79 or a point outside 0..99.
[[nodiscard]] std::size_t LinkSlot(int route, int point);

// ---- Conversions between the text form and one layout's entry at a slot. Texts are evaluated as numbers leniently:
// an empty or non-numeric text is 0.

void RecordToWaypoint(InternalData& data, WaypointType type, int slot, const WaypointRecord& record);
void WaypointToRecord(InternalData& data, WaypointType type, int slot, WaypointRecord& record);

}  // namespace walrim
