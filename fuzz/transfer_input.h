// What the targets of transfers share: the parts of an input, and what is held of a kind.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>

#include "device/types/WaypointTypes.h"
#include "support/DeviceWorld.h"
#include "text/Utf8.h"

namespace walrim {

/// Receivers of all types.
inline constexpr std::array<std::string_view, 4> Descriptions{"GPS 12 Software", "GPS III Software",
                                                              "GPS 12CX Software", "eTrex Software"};

/// The first byte of an input: the kind (two bits), the receiver's types (two bits) and the link (its high bit:
/// checked).
struct TransferChoice {
  explicit TransferChoice(std::uint8_t byte)
      : kind(AllDataKinds[byte % 4U % AllDataKinds.size()]),
        description(Descriptions[byte / 4U % Descriptions.size()]),
        link(byte >= 128 ? LinkChoice::Checked : LinkChoice::Plain) {}

  DataKind kind;
  std::string_view description;
  LinkChoice link;
};

/// Takes an input apart; what is not there is 0 or empty.
class InputReader {
 public:
  explicit InputReader(std::span<const std::uint8_t> input) : input_(input) {}

  [[nodiscard]] bool AtEnd() const { return input_.empty(); }
  std::uint8_t Byte() {
    if (input_.empty()) return 0;
    const std::uint8_t byte = input_[0];
    input_ = input_.subspan(1);
    return byte;
  }
  /// Bytes behind their number.
  Bytes Counted() {
    const std::size_t wanted = Byte();
    const auto bytes = input_.first(std::min(wanted, input_.size()));
    input_ = input_.subspan(bytes.size());
    return {bytes.begin(), bytes.end()};
  }
  /// A frame of an id and counted data.
  Bytes Frame() {
    const int id = Byte();
    return WireFrame(id, Counted());
  }

 private:
  std::span<const std::uint8_t> input_;
};

/// Id of one of a kind's records.
inline int RecordId(DataKind kind, int choice) {
  switch (kind) {
    case DataKind::Waypoint:
      return 35;
    case DataKind::Route:
      return std::array{29, 30, 98}[static_cast<std::size_t>(choice % 3)];
    case DataKind::TrackLog:
      return std::array{34, 99}[static_cast<std::size_t>(choice % 2)];
  }
  return 0;
}

inline bool SameRecords(const DataSet& one, const DataSet& other, DataKind kind) {
  switch (kind) {
    case DataKind::Waypoint:
      return one.Waypoints() == other.Waypoints();
    case DataKind::Route:
      return one.Routes() == other.Routes();
    case DataKind::TrackLog:
      return one.Logs() == other.Logs();
  }
  return false;
}

inline void RequireUtf8(std::initializer_list<std::string_view> texts) {
  for (const std::string_view text : texts) {
    if (!IsValidUtf8(text)) std::abort();
  }
}

/// Texts in UTF-8, and in a type's fields of fixed width as wide as these.
inline void RequireSound(const Waypoint& waypoint) {
  const WaypointDetails& details = *waypoint.details;
  RequireUtf8({waypoint.ident, waypoint.cmnt, details.state, details.country, details.facility, details.city,
               details.addr, details.cross_road});
  if (waypoint.type == WaypointType::D108) return;
  if (Cp932Width(waypoint.ident) != 6 || Cp932Width(waypoint.cmnt) != 40) std::abort();
}

inline void RequireSound(const DataSet& data) {
  for (const Waypoint& waypoint : data.Waypoints())
    RequireSound(waypoint);
  for (const Route& route : data.Routes()) {
    RequireUtf8({route.cmnt});
    if (route.type == RouteHeaderType::D201 && Cp932Width(route.cmnt) != 20) std::abort();
    for (const RoutePoint& point : route.points) {
      RequireSound(point.waypoint);
      RequireUtf8({point.link->ident});
    }
  }
  for (const TrackLog& log : data.Logs())
    RequireUtf8({log.trk_ident});
}

}  // namespace walrim
