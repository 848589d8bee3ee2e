#include "app/SouthAndWest.h"

#include <algorithm>

namespace walrim {

namespace {

struct SouthOrWest {
  bool operator()(const Waypoint& point) const { return point.lat_deg < 0 || point.lon_deg < 0; }
  bool operator()(const RoutePoint& point) const { return (*this)(point.waypoint); }
  bool operator()(const TrackPoint& point) const { return point.lat_deg < 0 || point.lon_deg < 0; }
};

/// Of records, or of the points of all of them.
template <typename Record>
int CountIn(const std::vector<Record>& records) {
  std::ptrdiff_t found = 0;
  if constexpr (requires(Record record) { record.points; }) {
    for (const Record& record : records)
      found += std::ranges::count_if(record.points, SouthOrWest{});
  } else {
    found = std::ranges::count_if(records, SouthOrWest{});
  }
  return static_cast<int>(found);
}

}  // namespace

int CountSouthAndWest(const DataSet& data, const DataKinds& kinds) {
  return (kinds[IndexOf(DataKind::Waypoint)] ? CountIn(data.Waypoints()) : 0) +
         (kinds[IndexOf(DataKind::Route)] ? CountIn(data.Routes()) : 0) +
         (kinds[IndexOf(DataKind::TrackLog)] ? CountIn(data.Logs()) : 0);
}

}  // namespace walrim
