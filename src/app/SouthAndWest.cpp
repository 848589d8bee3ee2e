#include "app/SouthAndWest.h"

#include <algorithm>

namespace walrim {

namespace {

/// How many of count entries from first on, as far as there are entries, lie south or west.
template <typename Entry>
int CountIn(const PagedTable<Entry>& entries, int first, int count) {
  const int end = std::min(first + count, static_cast<int>(entries.size()));
  int found = 0;
  for (int i = first; i < end; ++i) {
    const Entry& entry = entries[static_cast<std::size_t>(i)];
    if (entry.lat_deg < 0 || entry.lon_deg < 0) ++found;
  }
  return found;
}

int CountInRoutes(const InternalData& data) {
  const RouteCounters& routes = data.mirrored_routes;
  int found = 0;
  for (int route = 1; route <= routes.RouteCount; ++route) {
    const auto r = static_cast<std::size_t>(route);
    found += CountIn(data.d108, RoutePointSlot(route, routes.first_point[r]), routes.RoutePointCount[r]);
  }
  return found;
}

int CountInTracks(const InternalData& data) {
  const TrackCounters& tracks = data.mirrored_tracks;
  int found = 0;
  for (int log = 0; log <= tracks.TrackCount; ++log) {
    const auto t = static_cast<std::size_t>(log);
    found += CountIn(data.track_points, tracks.TrackStart[t], tracks.TrackPointCount[t]);
  }
  return found;
}

}  // namespace

int CountSouthAndWest(const InternalData& data, const std::array<bool, DataKindCount>& kinds) {
  int found = 0;
  if (kinds[IndexOf(DataKind::Waypoint)]) found += CountIn(data.d108, 1, data.WaypointCount);
  if (kinds[IndexOf(DataKind::Route)]) found += CountInRoutes(data);
  if (kinds[IndexOf(DataKind::TrackLog)]) found += CountInTracks(data);
  return found;
}

}  // namespace walrim
