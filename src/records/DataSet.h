// The data set: what the program holds, within what the receivers can hold.
#pragma once

#include <cstddef>
#include <vector>

#include "records/DataKind.h"
#include "records/Route.h"
#include "records/TrackLog.h"
#include "records/Waypoint.h"

namespace walrim {

inline constexpr std::size_t MaxWaypoints = 1999;
inline constexpr std::size_t MaxRoutes = 79;
inline constexpr std::size_t MaxRoutePoints = 100;         ///< of one route, from a file
inline constexpr std::size_t MaxReceivedRoutePoints = 99;  ///< of one route, from a receiver
inline constexpr std::size_t MaxTrackLogs = 1536;          ///< a headless log is not counted
inline constexpr std::size_t MaxTrackPoints = 30000;       ///< of all logs

/// The records of a kind that a data set holds at most.
[[nodiscard]] constexpr std::size_t LimitOf(DataKind kind) {
  switch (kind) {
    case DataKind::Waypoint:
      return MaxWaypoints;
    case DataKind::Route:
      return MaxRoutes;
    case DataKind::TrackLog:
      return MaxTrackLogs;
  }
  return 0;
}

/// What became of a record that was to be added. Only Stored changed anything.
enum class AddResult {
  Stored,
  Full,           ///< no more records of the kind are taken
  NoHeader,       ///< a point without a route or log to put it into
  HeaderRefused,  ///< a point of a route or log that was refused
};

/// Waypoints, routes and track logs in their order. Starts empty.
class DataSet {
 public:
  [[nodiscard]] const std::vector<Waypoint>& Waypoints() const { return waypoints_; }
  [[nodiscard]] const std::vector<Route>& Routes() const { return routes_; }
  [[nodiscard]] const std::vector<TrackLog>& Logs() const { return logs_; }

  /// Waypoints, routes, or the logs that are counted.
  [[nodiscard]] std::size_t Count(DataKind kind) const;
  /// Whether there is anything of a kind, a headless log included.
  [[nodiscard]] bool Holds(DataKind kind) const;
  [[nodiscard]] std::size_t TrackPointCount() const { return track_point_count_; }
  /// The number that the first log of Logs() has: 0 for a headless one, else 1.
  [[nodiscard]] int FirstLogNumber() const { return !logs_.empty() && logs_.front().headless ? 0 : 1; }

  [[nodiscard]] AddResult Add(Waypoint waypoint);
  /// Begins a route, which the points added next go to, also those of the next file. Refused ones refuse their points.
  [[nodiscard]] AddResult Begin(Route route);
  [[nodiscard]] AddResult Add(RoutePoint point);
  /// Begins a track log in the same way. A headless one is taken only in front of all others.
  [[nodiscard]] AddResult Begin(TrackLog log);
  [[nodiscard]] AddResult Add(const TrackPoint& point);

  /// What the next point of a route, or of a log, will meet; Stored where it will be taken.
  [[nodiscard]] AddResult NextRoutePoint() const;
  [[nodiscard]] AddResult NextTrackPoint() const;

  /// Gives a point of a log another time. Both are indices, of what there is.
  void SetTime(std::size_t log, std::size_t point, GarminSeconds time) { logs_[log].points[point].time = time; }

  /// Says whether a record, by its index, is one of those that the commands take.
  void SetChosen(DataKind kind, std::size_t index, bool chosen);

  /// Empties a kind. Points that come next have no header then.
  void Clear(DataKind kind);
  /// Takes a kind out of another data set, in place of what this one holds of it. The other one is left without it.
  void Take(DataKind kind, DataSet& other);

 private:
  /// Where the points that come next belong.
  enum class Header { None, Open, Refused };

  std::vector<Waypoint> waypoints_;
  std::vector<Route> routes_;
  std::vector<TrackLog> logs_;
  std::size_t track_point_count_ = 0;
  Header route_header_ = Header::None;
  Header log_header_ = Header::None;
};

}  // namespace walrim
