#include "faults/Contents.h"

#include <cstdio>

namespace walrim {

namespace {

/// Points of each route or track log; waypoints are as many as all of them.
struct Shape {
  std::string_view prefix;
  std::vector<int> groups;
};

// In the other kinds' middle and last records a small kind has none any more, on any model.
Shape ShapeOf(DataKind kind, Amount amount) {
  switch (amount) {
    case Amount::Old:
      return {"O", {2}};
    case Amount::Small:
      return kind == DataKind::Route ? Shape{"S", {1}} : Shape{"S", {2}};
    case Amount::Large:
      break;
  }
  return kind == DataKind::Route ? Shape{"L", {3, 2}} : Shape{"L", {4, 3}};
}

std::string Name(const Shape& shape, std::string_view letter, int number) {
  return std::string(shape.prefix) + std::string(letter) + std::to_string(number);
}

HeldWaypoint MakeWaypoint(const std::string& ident, int number) {
  HeldWaypoint waypoint;
  waypoint.ident = ident;
  waypoint.lat_deg = 35 + 0.01 * number;
  waypoint.lon_deg = 139 - 0.02 * number;
  waypoint.cmnt = "AT " + ident;
  return waypoint;
}

std::vector<HeldWaypoint> WaypointsOf(const Shape& shape) {
  std::vector<HeldWaypoint> waypoints;
  for (const int count : shape.groups) {
    for (int i = 0; i < count; ++i) {
      const int number = static_cast<int>(waypoints.size()) + 1;
      waypoints.push_back(MakeWaypoint(Name(shape, "W", number), number));
    }
  }
  return waypoints;
}

std::vector<HeldRoute> RoutesOf(const Shape& shape) {
  std::vector<HeldRoute> routes;
  int point = 0;
  for (const int count : shape.groups) {
    HeldRoute route;
    route.nmbr = static_cast<std::uint8_t>(routes.size() + 1);
    route.cmnt = Name(shape, "ROUTE", route.nmbr);
    for (int i = 0; i < count; ++i) {
      ++point;
      HeldRoutePoint held;
      held.waypoint = MakeWaypoint(Name(shape, "P", point), point);
      held.link_ident = Name(shape, "LINK", point);
      route.points.push_back(held);
    }
    routes.push_back(route);
  }
  return routes;
}

std::vector<HeldTrackLog> TracksOf(const Shape& shape) {
  std::vector<HeldTrackLog> logs;
  // Far enough apart that no time of one amount is a time of another.
  std::uint32_t time_s = 400'000'000U + 100'000U * static_cast<std::uint32_t>(shape.prefix.front());
  for (const int count : shape.groups) {
    HeldTrackLog log;
    log.trk_ident = Name(shape, "LOG", static_cast<int>(logs.size()) + 1);
    for (int i = 0; i < count; ++i) {
      time_s += 60;
      log.points.push_back({35 + 0.01 * i, 139 - 0.02 * i, time_s, i == 0, UnknownHeight, UnknownHeight});
    }
    logs.push_back(log);
  }
  return logs;
}

std::string BytesOfTime(std::uint32_t time_s) {
  std::string bytes;
  for (int shift = 0; shift < 32; shift += 8)
    bytes.push_back(static_cast<char>((time_s >> shift) & 0xFFU));
  return bytes;
}

NamedRecord WaypointRecordOf(std::uint8_t id, const HeldWaypoint& waypoint) {
  return {id, WaypointLine(waypoint.ident, waypoint.lat_deg, waypoint.lon_deg), "AT " + waypoint.ident + " "};
}

void Append(std::vector<NamedRecord>& records, const HeldRoute& route, bool links) {
  records.push_back({29, RouteLine(route.cmnt), route.cmnt});
  for (const HeldRoutePoint& point : route.points) {
    records.push_back(WaypointRecordOf(30, point.waypoint));
    if (links) records.push_back({98, LinkLine(point.link_ident), point.link_ident});
  }
}

void Append(std::vector<NamedRecord>& records, const HeldTrackLog& log, bool header) {
  if (header) records.push_back({99, TrackLine(log.trk_ident), log.trk_ident});
  for (const HeldTrackPoint& point : log.points) {
    records.push_back({34, TrackPointLine(point.time_s, point.new_trk, point.lat_deg), BytesOfTime(point.time_s)});
  }
}

}  // namespace

std::string WaypointLine(std::string_view ident, double lat_deg, double lon_deg) {
  char position[40];
  std::snprintf(position, sizeof position, " %.4f %.4f", lat_deg, lon_deg);
  return std::string(ident) + position;
}

std::string RouteLine(std::string_view name) {
  return "route " + std::string(name);
}

std::string LinkLine(std::string_view ident) {
  return "link " + std::string(ident);
}

std::string TrackLine(std::string_view ident) {
  return "log " + std::string(ident);
}

std::string TrackPointLine(std::uint32_t time_s, bool new_trk, double lat_deg) {
  char lat[20];
  std::snprintf(lat, sizeof lat, " %.4f", lat_deg);
  return std::string(new_trk ? "begins " : "goes on ") + std::to_string(time_s) + lat;
}

HeldContents ContentsOf(const Amounts& amounts) {
  const auto shape = [&](DataKind kind) { return ShapeOf(kind, amounts[IndexOf(kind)]); };
  return {WaypointsOf(shape(DataKind::Waypoint)), RoutesOf(shape(DataKind::Route)),
          TracksOf(shape(DataKind::TrackLog))};
}

std::vector<NamedRecord> RecordsOf(DataKind kind, Amount amount, bool links_and_headers) {
  const HeldContents contents = ContentsOf({amount, amount, amount});
  std::vector<NamedRecord> records;
  switch (kind) {
    case DataKind::Waypoint:
      for (const HeldWaypoint& waypoint : contents.waypoints)
        records.push_back(WaypointRecordOf(35, waypoint));
      break;
    case DataKind::Route:
      for (const HeldRoute& route : contents.routes)
        Append(records, route, links_and_headers);
      break;
    case DataKind::TrackLog:
      for (const HeldTrackLog& log : contents.track_logs)
        Append(records, log, links_and_headers);
      break;
  }
  return records;
}

const std::vector<LinePacket>& PacketsOf(const ReceiverMemory& memory, DataKind kind) {
  switch (kind) {
    case DataKind::Waypoint:
      return memory.waypoints;
    case DataKind::Route:
      return memory.routes;
    case DataKind::TrackLog:
      break;
  }
  return memory.tracks;
}

std::string Differs(const std::vector<LinePacket>& packets, const std::vector<NamedRecord>& records) {
  if (packets.size() != records.size()) {
    return std::to_string(packets.size()) + " records, not " + std::to_string(records.size());
  }
  for (std::size_t i = 0; i < packets.size(); ++i) {
    // A text that fills no field is followed by its zero byte, which stands for a blank.
    std::string bytes(packets[i].data.begin(), packets[i].data.end());
    if (records[i].id != 34) {
      for (char& byte : bytes)
        byte = byte == 0 ? ' ' : byte;
    }
    if (packets[i].id != records[i].id || bytes.find(records[i].mark) == std::string::npos) {
      return "record " + std::to_string(i + 1) + " is not " + records[i].line;
    }
  }
  return {};
}

}  // namespace walrim
