// Waypoint type D107: D103 with a proximity distance and four colours.
#pragma once

#include "device/types/FixedWidth.h"
#include "records/Symbols.h"
#include "text/Scan.h"

namespace walrim {

struct D107 : WaypointWalk<D107> {
  static Waypoint Blank() {
    Waypoint waypoint = BlankFixedWidth(WaypointType::D107);
    waypoint.color = 0;
    return waypoint;
  }
  static Waypoint Fitting(const Waypoint& from, EncodeNotes& notes) {
    Waypoint waypoint = FixedWidthOf(from, WaypointType::D107, notes);
    if (from.type != WaypointType::D107) waypoint.ident = UpperCase(Blanked(from.ident));
    FitSmallSymbol(waypoint, notes);
    if (waypoint.color <= LargestSmallColour) return waypoint;
    if (waypoint.color != DefaultLargeColour) notes.replaced = true;
    waypoint.color = 0;
    return waypoint;
  }
  template <typename Wire, typename Record>
  static void Walk(Wire& wire, Record& waypoint) {
    WalkFixedWidth(wire, waypoint);
    wire.Byte(waypoint.smbl);
    wire.Byte(waypoint.dspl);
    wire.Distance(waypoint.dst_m);
    wire.Byte(waypoint.color);
  }
};

}  // namespace walrim
