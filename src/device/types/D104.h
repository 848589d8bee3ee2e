// Waypoint type D104: all symbols, and a proximity distance.
#pragma once

#include "device/types/FixedWidth.h"
#include "records/Symbols.h"

namespace walrim {

struct D104 : WaypointWalk<D104> {
  static constexpr std::uint16_t WaypointDot = 18;

  static Waypoint Blank() {
    Waypoint waypoint = BlankFixedWidth(WaypointType::D104);
    waypoint.smbl = WaypointDot;
    return waypoint;
  }
  static Waypoint Fitting(const Waypoint& from, EncodeNotes& notes) {
    Waypoint waypoint = FixedWidthOf(from, WaypointType::D104, notes);
    waypoint.smbl = from.smbl.value_or(WaypointDot);
    if (HasSmallSymbol(from)) waypoint.smbl = LargeSymbolFor(*waypoint.smbl);
    return waypoint;
  }
  template <typename Wire, typename Record>
  static void Walk(Wire& wire, Record& waypoint) {
    WalkFixedWidth(wire, waypoint);
    wire.Distance(waypoint.dst_m);
    wire.Word(waypoint.smbl);
    wire.Byte(waypoint.dspl);
  }
};

}  // namespace walrim
