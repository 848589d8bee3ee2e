// One record on its way to a receiver: through the encoder of the receiver's type, and back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "preflight/Recipient.h"
#include "records/Route.h"
#include "records/TrackLog.h"
#include "records/Waypoint.h"

namespace walrim {

/// What becomes of a record on the way.
enum class Sending : std::uint8_t {
  Taken,
  Refused,    ///< a text is longer than the type allows: the receiver does not acknowledge it
  Unsendable  ///< it cannot be encoded, and none of its kind is sent
};

/// A record as it arrives; as it was made where it does not.
template <typename Record>
struct Sent {
  Sending sending = Sending::Taken;
  Record record;
  bool replaced = false;  ///< a symbol or a colour stands in for one that the receiver lacks
};

[[nodiscard]] Sent<Waypoint> Send(const Waypoint& waypoint, const Recipient& to);
/// Without its points. number is the route's in the transfer, from 1.
[[nodiscard]] Sent<Route> SendHeader(const Route& route, const Recipient& to, int number);
[[nodiscard]] Sent<RouteLink> Send(const RouteLink& link, const Recipient& to);
[[nodiscard]] Sent<TrackPoint> Send(const TrackPoint& point, const Recipient& to);
/// Without its points.
[[nodiscard]] Sent<TrackLog> SendHeader(const TrackLog& log, const Recipient& to);

/// The letters of a name that a receiver keeps, small ones as capitals. All of them, and as they are, where the
/// model is not known. Without the blanks or zero characters behind it.
[[nodiscard]] std::string KeptName(std::string_view ident, const Recipient& to);
/// The name of a record that came from a receiver, as that compares it: without the blanks and zero characters behind.
[[nodiscard]] std::string HeldName(std::string_view ident);
/// A text without the blanks and the zero characters around it, which fields of fixed width are padded with.
[[nodiscard]] std::string Bare(std::string_view text);

// The most bytes of the texts of the types that end them with a zero byte.
inline constexpr std::size_t LongText = 50;
inline constexpr std::size_t FacilityText = 30;
inline constexpr std::size_t CityText = 24;

}  // namespace walrim
