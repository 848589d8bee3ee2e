#include "preflight/Sending.h"

#include <algorithm>
#include <stdexcept>

#include "device/types/RouteTypes.h"
#include "device/types/TrackTypes.h"
#include "device/types/WaypointTypes.h"
#include "text/Cp932.h"
#include "text/Scan.h"

namespace walrim {

namespace {

/// Encodes a record and decodes what that gives. too_long tells of a text that a receiver of a known model refuses.
template <typename Record, typename Encode, typename Decode, typename TooLong>
Sent<Record> ThereAndBack(const Recipient& to, Encode encode, Decode decode, TooLong too_long) {
  EncodeNotes notes;
  try {
    const std::vector<std::uint8_t> data = encode(notes);
    if (notes.lacking) return {Sending::Unsendable, {}, false};
    Sent<Record> sent{Sending::Taken, decode(data), notes.replaced};
    if (to.limits && too_long(sent.record)) sent.sending = Sending::Refused;
    return sent;
  } catch (const std::overflow_error&) {
    return {Sending::Unsendable, {}, false};
  }
}

bool IsLong(std::string_view text, std::size_t most = LongText) {
  return Cp932Width(text) > most;
}

bool HasLongText(const Waypoint& waypoint) {
  if (HasFixedWidthTexts(waypoint.type)) return false;
  const WaypointDetails& details = *waypoint.details;
  return IsLong(waypoint.ident) || IsLong(waypoint.cmnt) || IsLong(details.facility, FacilityText) ||
         IsLong(details.city, CityText) || IsLong(details.addr) || IsLong(details.cross_road);
}

}  // namespace

Sent<Waypoint> Send(const Waypoint& waypoint, const Recipient& to) {
  return ThereAndBack<Waypoint>(
      to, [&](EncodeNotes& notes) { return EncodeWaypoint(waypoint, to.types.waypoint, notes); },
      [&](const auto& data) { return DecodeWaypoint(data, to.types.waypoint); }, HasLongText);
}

Sent<Route> SendHeader(const Route& route, const Recipient& to, int number) {
  return ThereAndBack<Route>(
      to, [&](EncodeNotes& notes) { return EncodeRouteHeader(route, to.types.route_header, notes); },
      [&](const auto& data) { return DecodeRouteHeader(data, to.types.route_header, number); },
      [](const Route& sent) { return sent.type == RouteHeaderType::D202 && IsLong(sent.cmnt); });
}

Sent<RouteLink> Send(const RouteLink& link, const Recipient& to) {
  if (to.types.route_link != RouteLinkType::D210) return {};
  return ThereAndBack<RouteLink>(
      to, [&](EncodeNotes& notes) { return EncodeRouteLink(link, to.types.route_link, notes); },
      [](const auto& data) { return DecodeRouteLink(data); }, [](const RouteLink& sent) { return IsLong(sent.ident); });
}

Sent<TrackPoint> Send(const TrackPoint& point, const Recipient& to) {
  return ThereAndBack<TrackPoint>(
      to, [&](EncodeNotes& /*notes*/) { return EncodeTrackPoint(point, to.types.track_point); },
      [&](const auto& data) { return DecodeTrackPoint(data, to.types.track_point); },
      [](const TrackPoint& /*sent*/) { return false; });
}

Sent<TrackLog> SendHeader(const TrackLog& log, const Recipient& to) {
  if (to.types.track_header != TrackHeaderType::D310) return {};
  return ThereAndBack<TrackLog>(
      to, [&](EncodeNotes& notes) { return EncodeTrackHeader(log, to.types.track_header, notes); },
      [](const auto& data) { return DecodeTrackHeader(data); },
      [](const TrackLog& sent) { return IsLong(sent.trk_ident); });
}

std::string KeptName(std::string_view ident, const Recipient& to) {
  if (!to.limits) return Bare(ident);
  std::string kept;
  for (const char c : ident) {
    if (kept.size() >= to.limits->name) break;
    const bool blank = to.limits->blanks && (c == ' ' || c == '-');
    if (IsLetter(c) || IsDigit(c) || blank) kept.push_back(UpperCase(c));
  }
  kept.resize(kept.find_last_not_of(' ') + 1);
  return kept;
}

std::string HeldName(std::string_view ident) {
  std::string name(ident);
  name.resize(name.find_last_not_of(std::string_view(" \0", 2)) + 1);
  return name;
}

std::string Bare(std::string_view text) {
  std::string bare(text);
  std::ranges::replace(bare, '\0', ' ');
  return std::string(TrimBlanks(bare));
}

}  // namespace walrim
