#include "app/SouthAndWest.h"

namespace walrim {

int CountSouthAndWest(const DataSet& data, const DataKinds& kinds) {
  int found = 0;
  const auto count = [&found](const auto& position) {
    if (position.lat_deg < 0 || position.lon_deg < 0) ++found;
  };
  if (kinds[IndexOf(DataKind::Waypoint)]) {
    for (const Waypoint& waypoint : data.Waypoints())
      count(waypoint);
  }
  if (kinds[IndexOf(DataKind::Route)]) {
    for (const Route& route : data.Routes()) {
      for (const RoutePoint& point : route.points)
        count(point.waypoint);
    }
  }
  if (kinds[IndexOf(DataKind::TrackLog)]) {
    for (const TrackLog& log : data.Logs()) {
      for (const TrackPoint& point : log.points)
        count(point);
    }
  }
  return found;
}

}  // namespace walrim
