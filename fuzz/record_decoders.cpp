// Any data can be taken for a record of any type. What was decoded can be sent, and comes back as the same record, but
// for a symbol or a colour that receivers of the type cannot show.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "device/types/RouteTypes.h"
#include "device/types/TrackTypes.h"
#include "records/Symbols.h"
#include "transfer_input.h"

using namespace walrim;

namespace {

using Data = std::span<const std::uint8_t>;

/// What of a waypoint is sent: pictures that receivers of its type can show.
Waypoint Sendable(Waypoint waypoint) {
  const bool small = waypoint.type == WaypointType::D103 || waypoint.type == WaypointType::D107;
  if (small && waypoint.smbl > LargestSmallSymbol) waypoint.smbl = SmallSymbolFor(*waypoint.smbl).code;
  if (waypoint.type == WaypointType::D107 && waypoint.color > LargestSmallColour) waypoint.color = 0;
  return waypoint;
}
template <typename Record>
const Record& Sendable(const Record& record) {
  return record;
}

/// decode(data) makes a record; encode(record, notes) data of it.
template <typename Decode, typename Encode>
void CheckType(Data data, Decode decode, Encode encode) {
  const auto record = decode(data);
  EncodeNotes notes;
  const Bytes sent = encode(record, notes);
  if (sent.size() > LongestSentData || notes.lacking || notes.cut_texts > 0) std::abort();
  const auto back = decode(sent);
  if (!notes.cut) {
    if (!(back == Sendable(record))) std::abort();
    return;
  }
  // What was cut to fit is not cut again.
  EncodeNotes again;
  if (encode(back, again) != sent || again.cut) std::abort();
}

void CheckWaypoints(Data data, WaypointType type) {
  CheckType(
      data,
      [=](Data from) {
        const Waypoint waypoint = DecodeWaypoint(from, type);
        RequireSound(waypoint);
        return waypoint;
      },
      [=](const Waypoint& waypoint, EncodeNotes& notes) { return EncodeWaypoint(waypoint, type, notes); });
}

void CheckRouteHeaders(Data data, RouteHeaderType type) {
  CheckType(
      data, [=](Data from) { return DecodeRouteHeader(from, type, 1); },
      [=](const Route& route, EncodeNotes& notes) { return EncodeRouteHeader(route, type, notes); });
}

void CheckTrackPoints(Data data, TrackPointType type) {
  CheckType(
      data, [=](Data from) { return DecodeTrackPoint(from, type); },
      [=](const TrackPoint& point, EncodeNotes&) { return EncodeTrackPoint(point, type); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const Data data(bytes, std::min<std::size_t>(size, 255));
  for (const WaypointType type : {WaypointType::D103, WaypointType::D104, WaypointType::D107, WaypointType::D108})
    CheckWaypoints(data, type);
  CheckRouteHeaders(data, RouteHeaderType::D201);
  CheckRouteHeaders(data, RouteHeaderType::D202);
  CheckTrackPoints(data, TrackPointType::D300);
  CheckTrackPoints(data, TrackPointType::D301);
  CheckType(data, DecodeRouteLink, [](const RouteLink& link, EncodeNotes& notes) {
    return EncodeRouteLink(link, RouteLinkType::D210, notes);
  });
  CheckType(data, DecodeTrackHeader, [](const TrackLog& log, EncodeNotes& notes) {
    return EncodeTrackHeader(log, TrackHeaderType::D310, notes);
  });
  return 0;
}
