// What the waypoint types with texts of fixed width (D103, D104, D107) have in common.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "device/types/Wire.h"
#include "records/Waypoint.h"

namespace walrim {

inline constexpr std::size_t IdentWidth = 6;
inline constexpr std::size_t CommentWidth = 40;

/// An empty one of a type.
[[nodiscard]] Waypoint BlankFixedWidth(WaypointType type);
/// Upper case without blanks around it, and the zero character that ends it where its field is longer.
[[nodiscard]] std::string ZeroEnded(std::string_view text);
/// A waypoint as one of a type: one of another type gets texts as ZeroEnded makes them. Counts the texts that are cut.
[[nodiscard]] Waypoint FixedWidthOf(const Waypoint& from, WaypointType type, EncodeNotes& notes);
/// One of the 16 symbols in place of another.
void FitSmallSymbol(Waypoint& waypoint, EncodeNotes& notes);

/// The fields that these types begin with.
template <typename Wire, typename Record>
void WalkFixedWidth(Wire& wire, Record& waypoint) {
  wire.Text(waypoint.ident, IdentWidth);
  wire.Angle(waypoint.lat_deg);
  wire.Angle(waypoint.lon_deg);
  wire.DWord(waypoint.unused);
  wire.Text(waypoint.cmnt, CommentWidth);
}

/// Read, Write of a class with a static Walk of a waypoint.
template <typename Type>
struct WaypointWalk {
  static constexpr std::size_t PositionOffset = IdentWidth;

  static void Read(PacketReader& wire, Waypoint& waypoint) { Type::Walk(wire, waypoint); }
  static void Write(PacketWriter& wire, const Waypoint& waypoint) { Type::Walk(wire, waypoint); }
};

}  // namespace walrim
