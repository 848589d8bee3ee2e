#include "receiver/ReceiverMemory.h"

#include <algorithm>
#include <array>
#include <string>

#include "receiver/WireBytes.h"
#include "text/Scan.h"

namespace walrim {

namespace {

constexpr std::size_t IdentWidth = 6;
constexpr std::size_t CommentWidth = 40;
constexpr std::size_t RouteCommentWidth = 20;
constexpr std::size_t StateWidth = 2;
constexpr std::uint16_t PlainDot = 0;        // D103, D107
constexpr std::uint16_t PlainWaypoint = 18;  // D104, D108
constexpr std::uint8_t DefaultColor = 0;     // D107
constexpr std::uint8_t DefaultColor108 = 255;
constexpr std::size_t NewTrackOffset301 = 20;
constexpr std::size_t TimeOffset = 8;  // of D300 and D301

// Receivers with one byte for the symbol show a dot for what it cannot hold.
std::uint8_t SmallSymbol(const HeldWaypoint& waypoint) {
  const std::uint16_t symbol = waypoint.smbl.value_or(PlainDot);
  return static_cast<std::uint8_t>(symbol <= 255 ? symbol : PlainDot);
}

// What D103, D104 and D107 begin with.
WireBytes CommonBeginning(const HeldWaypoint& waypoint) {
  WireBytes bytes;
  bytes.FixedText(UpperCase(waypoint.ident), IdentWidth);
  bytes.Position(waypoint.lat_deg, waypoint.lon_deg);
  bytes.U32(0);
  bytes.FixedText(waypoint.cmnt, CommentWidth);
  return bytes;
}

std::vector<std::uint8_t> EncodeD103(const HeldWaypoint& waypoint) {
  WireBytes bytes = CommonBeginning(waypoint);
  bytes.U8(SmallSymbol(waypoint));
  bytes.U8(waypoint.dspl);
  return bytes.Take();
}

std::vector<std::uint8_t> EncodeD104(const HeldWaypoint& waypoint) {
  WireBytes bytes = CommonBeginning(waypoint);
  bytes.Float(waypoint.dst_m);
  bytes.U16(waypoint.smbl.value_or(PlainWaypoint));
  bytes.U8(waypoint.dspl);
  return bytes.Take();
}

std::vector<std::uint8_t> EncodeD107(const HeldWaypoint& waypoint) {
  WireBytes bytes = CommonBeginning(waypoint);
  bytes.U8(SmallSymbol(waypoint));
  bytes.U8(waypoint.dspl);
  bytes.Float(waypoint.dst_m);
  bytes.U8(waypoint.color.value_or(DefaultColor));
  return bytes.Take();
}

// The texts share the rest of the packet: an earlier one leaves each later one at least its zero byte.
void AppendTexts(WireBytes& bytes, const std::array<std::string, 6>& texts) {
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const std::size_t ends = texts.size() - i;
    bytes.EndedText(texts[i], MaxLinePacketData - bytes.Size() - ends);
  }
}

std::vector<std::uint8_t> EncodeD108(const HeldWaypoint& waypoint) {
  WireBytes bytes;
  bytes.U8(waypoint.wpt_class);
  bytes.U8(waypoint.color.value_or(DefaultColor108));
  bytes.U8(waypoint.dspl);
  bytes.U8(waypoint.attr);
  bytes.U16(waypoint.smbl.value_or(PlainWaypoint));
  bytes.Bytes(waypoint.subclass);
  bytes.Position(waypoint.lat_deg, waypoint.lon_deg);
  bytes.Float(waypoint.alt_m);
  bytes.Float(waypoint.dpth_m);
  bytes.Float(waypoint.dist_m);
  bytes.FixedText(waypoint.state, StateWidth);
  bytes.FixedText(waypoint.country, StateWidth);
  AppendTexts(bytes, {UpperCase(waypoint.ident), waypoint.cmnt, waypoint.facility, waypoint.city, waypoint.addr,
                      waypoint.cross_road});
  return bytes.Take();
}

std::vector<std::uint8_t> EncodeHeldWaypoint(const HeldWaypoint& waypoint, WaypointLayout layout) {
  switch (layout) {
    case WaypointLayout::D103:
      return EncodeD103(waypoint);
    case WaypointLayout::D104:
      return EncodeD104(waypoint);
    case WaypointLayout::D107:
      return EncodeD107(waypoint);
    case WaypointLayout::D108:
      break;
  }
  return EncodeD108(waypoint);
}

std::vector<std::uint8_t> EncodeD201(const HeldRoute& route) {
  WireBytes bytes;
  bytes.U8(route.nmbr);
  bytes.FixedText(route.cmnt, RouteCommentWidth);
  return bytes.Take();
}

std::vector<std::uint8_t> EncodeD202(const HeldRoute& route) {
  WireBytes bytes;
  bytes.EndedText(route.cmnt, MaxLinePacketData - 1);
  return bytes.Take();
}

std::vector<std::uint8_t> EncodeD210(const HeldRoutePoint& point) {
  WireBytes bytes;
  bytes.U16(point.link_class);
  bytes.Bytes(point.link_subclass);
  bytes.EndedText(point.link_ident, MaxLinePacketData - bytes.Size() - 1);
  return bytes.Take();
}

std::vector<std::uint8_t> EncodeD300(const HeldTrackPoint& point) {
  WireBytes bytes;
  bytes.Position(point.lat_deg, point.lon_deg);
  bytes.U32(point.time_s);
  bytes.Boolean(point.new_trk);
  return bytes.Take();
}

std::vector<std::uint8_t> EncodeD301(const HeldTrackPoint& point) {
  WireBytes bytes;
  bytes.Position(point.lat_deg, point.lon_deg);
  bytes.U32(point.time_s);
  bytes.Float(point.alt_m);
  bytes.Float(point.dpth_m);
  bytes.Boolean(point.new_trk);
  return bytes.Take();
}

std::vector<std::uint8_t> EncodeD310(const HeldTrackLog& log) {
  WireBytes bytes;
  bytes.Boolean(log.dspl);
  bytes.U8(log.color);
  bytes.EndedText(log.trk_ident, MaxLinePacketData - bytes.Size() - 1);
  return bytes.Take();
}

void AppendRoute(std::vector<LinePacket>& packets, const HeldRoute& route, const ReceiverModel& model) {
  const bool links = model.has_links_and_track_headers;
  packets.push_back({record_id::RouteHeader, links ? EncodeD202(route) : EncodeD201(route)});
  for (const HeldRoutePoint& point : route.points) {
    packets.push_back({record_id::RouteWaypoint, EncodeHeldWaypoint(point.waypoint, model.waypoint_layout)});
    if (links) packets.push_back({record_id::RouteLink, EncodeD210(point)});
  }
}

void AppendTrackLog(std::vector<LinePacket>& packets, const HeldTrackLog& log, bool header) {
  if (header) packets.push_back({record_id::TrackHeader, EncodeD310(log)});
  for (const HeldTrackPoint& point : log.points) {
    packets.push_back({record_id::TrackPoint, header ? EncodeD301(point) : EncodeD300(point)});
  }
}

}  // namespace

ReceiverMemory EncodeMemory(const HeldContents& contents, const ReceiverModel& model) {
  ReceiverMemory memory;
  for (const HeldWaypoint& waypoint : contents.waypoints) {
    memory.waypoints.push_back({record_id::Waypoint, EncodeHeldWaypoint(waypoint, model.waypoint_layout)});
  }
  for (const HeldRoute& route : contents.routes)
    AppendRoute(memory.routes, route, model);
  for (const HeldTrackLog& log : contents.track_logs) {
    AppendTrackLog(memory.tracks, log, model.has_links_and_track_headers);
  }
  return memory;
}

std::vector<LinePacket> WithLinksBetweenPoints(const std::vector<LinePacket>& routes) {
  std::vector<LinePacket> packets;
  for (std::size_t i = 0; i < routes.size(); ++i) {
    const bool last = i + 1 == routes.size() || routes[i + 1].id == record_id::RouteHeader;
    if (routes[i].id != record_id::RouteLink || !last) packets.push_back(routes[i]);
  }
  return packets;
}

std::vector<LinePacket> WithTimesBack(std::vector<LinePacket> tracks, std::int64_t seconds) {
  for (LinePacket& packet : tracks) {
    if (packet.id != record_id::TrackPoint || packet.data.size() < TimeOffset + 4) continue;
    std::uint32_t time = 0;
    for (std::size_t i = 4; i-- > 0;)
      time = time << 8 | packet.data[TimeOffset + i];
    if (time == 0 || time == 0xFFFFFFFF || time == 0x7FFFFFFF) continue;
    time -= static_cast<std::uint32_t>(seconds);
    for (std::size_t i = 0; i < 4; ++i, time >>= 8)
      packet.data[TimeOffset + i] = static_cast<std::uint8_t>(time & 0xFF);
  }
  return tracks;
}

std::vector<LinePacket> WithTwoSegments(std::vector<LinePacket> tracks) {
  if (tracks.empty() || tracks.front().id != record_id::TrackHeader) return tracks;
  const auto end = std::find_if(tracks.begin() + 1, tracks.end(),
                                [](const LinePacket& packet) { return packet.id == record_id::TrackHeader; });
  const auto count = static_cast<std::size_t>(end - tracks.begin()) - 1;
  for (std::size_t i = 1; i < count; ++i) {
    std::vector<std::uint8_t>& point = tracks[1 + i].data;
    if (point.size() > NewTrackOffset301) point[NewTrackOffset301] = i == count / 2 ? 255 : 0;
  }
  return tracks;
}

}  // namespace walrim
