// What was done to a data set, so that it can be undone.
#pragma once

#include <array>
#include <cstddef>
#include <variant>
#include <vector>

#include "records/DataKind.h"
#include "records/Route.h"
#include "records/Splice.h"
#include "records/TrackLog.h"
#include "records/Waypoint.h"

namespace walrim {

/// What stands behind the ends that the lists had: all that was added. Its own inverse, as a splice is.
struct AddedRecords {
  // The ends.
  std::size_t waypoints = 0;
  std::size_t routes = 0;
  std::size_t route_points = 0;  ///< of the last of those routes
  std::size_t logs = 0;
  std::size_t track_points = 0;  ///< of the last of those logs

  // What was added, while it is not in the lists.
  std::vector<Waypoint> absent_waypoints;
  std::vector<Route> absent_routes;
  std::vector<RoutePoint> absent_route_points;
  std::vector<TrackLog> absent_logs;
  std::vector<TrackPoint> absent_track_points;
};

/// How many records and points of each kind something concerns. A waypoint is no point.
struct ConcernedRecords {
  std::array<std::size_t, DataKindCount> records{};
  std::array<std::size_t, DataKindCount> points{};

  friend bool operator==(const ConcernedRecords&, const ConcernedRecords&) = default;
};

/// Changes in the order they were made. DataSet::Exchange undoes them, and then redoes them, as often as is wanted.
class DataChanges {
 public:
  [[nodiscard]] bool Empty() const { return changes_.empty(); }

 private:
  friend class DataSet;

  using Change = std::variant<AddedRecords, Splice<Waypoint>, Splice<Route>, Splice<RoutePoint>, Splice<TrackLog>,
                              Splice<TrackPoint>, HeaderExchange<Route>, HeaderExchange<TrackLog>>;
  /// Where the points that come next belong.
  enum class Header { None, Open, Refused };
  struct Headers {
    Header route = Header::None;
    Header log = Header::None;
  };

  std::vector<Change> changes_;
  Headers headers_;  ///< what comes back with the exchange
};

}  // namespace walrim
