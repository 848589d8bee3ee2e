// The data set: what the program holds, within what the receivers can hold.
#pragma once

#include <cstddef>
#include <vector>

#include "records/DataChanges.h"
#include "records/DataKind.h"
#include "records/Route.h"
#include "records/Splice.h"
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

  // ---- Edits. False, with nothing changed: a place that is not there, more than a data set holds, or a headless log
  // behind another. One that changes nothing leaves no trace. Points that come next have no header behind an edit of
  // whole routes, or of whole logs.

  [[nodiscard]] bool Edit(Splice<Waypoint> splice);
  [[nodiscard]] bool Edit(Splice<Route> splice);
  [[nodiscard]] bool Edit(Splice<RoutePoint> splice);
  [[nodiscard]] bool Edit(Splice<TrackLog> splice);
  [[nodiscard]] bool Edit(Splice<TrackPoint> splice);
  /// What a route or a log says of itself; its points stay.
  [[nodiscard]] bool EditHeader(std::size_t at, Route header);
  [[nodiscard]] bool EditHeader(std::size_t at, TrackLog header);

  /// Says whether a record, by its index, is one of those that the commands take.
  void SetChosen(DataKind kind, std::size_t index, bool chosen);

  /// Empties a kind. Points that come next have no header then.
  void Clear(DataKind kind);
  /// Takes a kind out of another data set, in place of what this one holds of it. The other one is left without it.
  void Take(DataKind kind, DataSet& other);

  // ---- What was done

  /// From now on changes are kept. What is held then is the beginning.
  void KeepChanges();
  /// Those since the last call.
  [[nodiscard]] DataChanges TakeChanges();
  /// Undoes changes that were the last ones, or redoes them. None may be kept that were not taken.
  void Exchange(DataChanges& changes);
  /// How much the changes since the last call of TakeChanges concern: what stands in its place now, and what only went.
  [[nodiscard]] ConcernedRecords Concerned() const;

 private:
  using Header = DataChanges::Header;

  template <typename Record>
  [[nodiscard]] bool Make(Splice<Record> splice, std::vector<Record>& list);
  template <typename Exchanged, typename Record>
  [[nodiscard]] bool ExchangeNoted(Exchanged exchange, std::vector<Record>& list);
  template <typename Record>
  [[nodiscard]] bool MakeHeader(std::size_t at, Record header, std::vector<Record>& list);
  void ExchangeIn(Splice<Waypoint>& splice) { splice.Exchange(waypoints_); }
  void ExchangeIn(Splice<Route>& splice) { splice.Exchange(routes_); }
  void ExchangeIn(Splice<RoutePoint>& splice) { splice.Exchange(routes_[splice.owner].points); }
  void ExchangeIn(Splice<TrackLog>& splice) { splice.Exchange(logs_); }
  void ExchangeIn(Splice<TrackPoint>& splice) { splice.Exchange(logs_[splice.owner].points); }
  void ExchangeIn(HeaderExchange<Route>& exchange) { exchange.Exchange(routes_); }
  void ExchangeIn(HeaderExchange<TrackLog>& exchange) { exchange.Exchange(logs_); }
  void ExchangeIn(AddedRecords& added);
  void Note(DataChanges::Change change);
  void NoteAdditions() {
    if (!additions_noted_) NoteFirstAddition();
  }
  void NoteFirstAddition();
  [[nodiscard]] bool Fits() const;
  void CountTrackPoints();

  std::vector<Waypoint> waypoints_;
  std::vector<Route> routes_;
  std::vector<TrackLog> logs_;
  std::size_t track_point_count_ = 0;
  DataChanges::Headers headers_;
  bool keeps_changes_ = false;
  bool additions_noted_ = true;  ///< what is added needs no note of its own: none is wanted, or the last one covers it
  DataChanges kept_;
};

}  // namespace walrim
