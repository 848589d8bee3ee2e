// Waypoint type D103: 16 symbols, no proximity distance.
#pragma once

#include "device/types/FixedWidth.h"

namespace walrim {

struct D103 : WaypointWalk<D103> {
  static Waypoint Blank() {
    Waypoint waypoint = BlankFixedWidth(WaypointType::D103);
    waypoint.dst_m.reset();
    return waypoint;
  }
  static Waypoint Fitting(const Waypoint& from, EncodeNotes& notes) {
    Waypoint waypoint = FixedWidthOf(from, WaypointType::D103, notes);
    FitSmallSymbol(waypoint, notes);
    return waypoint;
  }
  template <typename Wire, typename Record>
  static void Walk(Wire& wire, Record& waypoint) {
    WalkFixedWidth(wire, waypoint);
    wire.Byte(waypoint.smbl);
    wire.Byte(waypoint.dspl);
  }
};

}  // namespace walrim
