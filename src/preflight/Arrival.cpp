#include "preflight/Arrival.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "preflight/Sending.h"

namespace walrim {

namespace {

/// The log that an upload of tracks goes to, where a receiver that names its logs held none.
constexpr std::string_view ActiveLogName = "ACTIVE LOG";

/// The worst of what became of the records of a kind so far.
class Worst {
 public:
  void Note(Sending sending) { worst_ = std::max(worst_, sending); }
  /// Nothing of a kind is stored where one of its records cannot be sent, or ends the upload.
  [[nodiscard]] bool NothingStored(const Recipient& to) const {
    return worst_ == Sending::Unsendable || EndsUpload(to);
  }
  [[nodiscard]] bool EndsUpload(const Recipient& to) const { return worst_ == Sending::Refused && to.checked_link; }

 private:
  Sending worst_ = Sending::Taken;
};

// Each gives what is held of its kind afterwards.

std::vector<Waypoint> WaypointsAfter(const DataSet& data, std::vector<Waypoint> held, const Recipient& to,
                                     Worst& worst) {
  std::vector<std::string> names;
  names.reserve(held.size());
  for (const Waypoint& waypoint : held)
    names.push_back(HeldName(waypoint.ident));
  for (const Waypoint& waypoint : data.Waypoints()) {
    Sent<Waypoint> sent = Send(waypoint, to);
    worst.Note(sent.sending);
    const std::string name = KeptName(sent.record.ident, to);
    if (sent.sending != Sending::Taken || (to.limits && name.empty())) continue;
    sent.record.ident = name;
    const auto same = std::ranges::find(names, name);
    if (same != names.end()) {
      held[static_cast<std::size_t>(same - names.begin())] = std::move(sent.record);
    } else if (!to.limits || held.size() < to.limits->waypoints) {
      held.push_back(std::move(sent.record));
      names.push_back(name);
    }
  }
  return held;
}

/// The routes of a transfer as the receiver puts them together. A point behind a header that was refused belongs to
/// the route before it.
std::vector<Route> ArrivedRoutes(const DataSet& data, const Recipient& to, Worst& worst) {
  std::vector<Route> routes;
  std::size_t points = 0;
  const std::size_t most = to.limits ? to.limits->route_points : MaxReceivedRoutePoints;
  for (const Route& route : data.Routes()) {
    Sent<Route> header = SendHeader(route, to, static_cast<int>(routes.size()) + 1);
    worst.Note(header.sending);
    if (header.sending == Sending::Taken) {
      routes.push_back(std::move(header.record));
      points = 0;
    }
    for (const RoutePoint& point : route.points) {
      Sent<Waypoint> sent = Send(point.waypoint, to);
      worst.Note(sent.sending);
      worst.Note(Send(*point.link, to).sending);
      sent.record.ident = KeptName(sent.record.ident, to);
      const bool named = !to.limits || !sent.record.ident.empty();
      if (sent.sending != Sending::Taken || !named || routes.empty() || points >= most) continue;
      ++points;
      routes.back().points.push_back({std::move(sent.record), {}});
    }
  }
  return routes;
}

std::vector<Route> RoutesAfter(const DataSet& data, std::vector<Route> held, const Recipient& to, Worst& worst) {
  for (Route& route : ArrivedRoutes(data, to, worst)) {
    const auto same = std::ranges::find_if(held, [&](const Route& other) {
      return route.type == RouteHeaderType::D201 ? route.nmbr == other.nmbr : route.cmnt == other.cmnt;
    });
    if (same != held.end()) {
      *same = std::move(route);
    } else if (!to.limits || held.size() < to.limits->routes) {
      held.push_back(std::move(route));
    }
  }
  return held;
}

std::vector<TrackLog> LogsAfter(const DataSet& data, std::vector<TrackLog> held, const Recipient& to, Worst& worst) {
  const bool named = to.types.track_header == TrackHeaderType::D310;
  if (held.empty()) {
    held.emplace_back();
    if (named) held.back().trk_ident = ActiveLogName;
  }
  // Where logs have no headers, all that is there is the active log.
  std::size_t there = 0;
  for (std::size_t i = 0; i < (named ? 1 : held.size()); ++i)
    there += held[i].points.size();
  TrackLog& active = named ? held.front() : held.back();
  for (const TrackLog& log : data.Logs()) {
    worst.Note(SendHeader(log, to).sending);
    for (const TrackPoint& point : log.points) {
      const Sent<TrackPoint> sent = Send(point, to);
      worst.Note(sent.sending);
      if (sent.sending != Sending::Taken || (to.limits && there >= to.limits->active_log)) continue;
      ++there;
      active.points.push_back(sent.record);
    }
  }
  return held;
}

void Store(std::vector<Waypoint> waypoints, DataSet& data) {
  data.Clear(DataKind::Waypoint);
  for (Waypoint& waypoint : waypoints)
    static_cast<void>(data.Add(std::move(waypoint)));
}
void Store(std::vector<Route> routes, DataSet& data) {
  data.Clear(DataKind::Route);
  for (Route& route : routes)
    static_cast<void>(data.Begin(std::move(route)));
}
void Store(std::vector<TrackLog> logs, DataSet& data) {
  data.Clear(DataKind::TrackLog);
  for (TrackLog& log : logs) {
    const std::vector<TrackPoint> points = std::exchange(log.points, {});
    static_cast<void>(data.Begin(std::move(log)));
    for (const TrackPoint& point : points)
      static_cast<void>(data.Add(point));
  }
}

template <typename Records>
void StoreUnless(bool nothing, Records records, DataSet& after) {
  if (!nothing) Store(std::move(records), after);
}

/// Puts a kind into what is held; false where the upload ends with it.
bool SendKind(const DataSet& data, DataKind kind, DataSet& after, const Recipient& to) {
  Worst worst;
  switch (kind) {
    case DataKind::Waypoint: {
      auto waypoints = WaypointsAfter(data, after.Waypoints(), to, worst);
      StoreUnless(worst.NothingStored(to), std::move(waypoints), after);
      break;
    }
    case DataKind::Route: {
      auto routes = RoutesAfter(data, after.Routes(), to, worst);
      StoreUnless(worst.NothingStored(to), std::move(routes), after);
      break;
    }
    case DataKind::TrackLog: {
      auto logs = LogsAfter(data, after.Logs(), to, worst);
      StoreUnless(worst.NothingStored(to), std::move(logs), after);
      break;
    }
  }
  return !worst.EndsUpload(to);
}

}  // namespace

DataSet HeldAfterUpload(const DataSet& data, const DataKinds& kinds, const DataSet& before, const Recipient& to) {
  DataSet after = before;
  for (const DataKind kind : AllDataKinds) {
    if (!kinds[IndexOf(kind)] || !data.Holds(kind)) continue;
    if (!SendKind(data, kind, after, to)) break;
  }
  return after;
}

}  // namespace walrim
