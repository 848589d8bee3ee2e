// Waypoint type D108: everything, and texts of any length.
#pragma once

#include "device/types/Wire.h"
#include "records/Symbols.h"
#include "records/Waypoint.h"
#include "text/Scan.h"

namespace walrim {

struct D108 {
  /// Behind the class, the colour, the display, the attributes, the symbol and the subclass.
  static constexpr std::size_t PositionOffset = 4 + 2 + SubclassBytes;

  static Waypoint Blank() { return {}; }
  /// A name keeps the blanks and the case that it came with.
  static Waypoint Fitting(const Waypoint& from, EncodeNotes& /*notes*/) {
    Waypoint waypoint = from;
    if (HasSmallSymbol(from)) waypoint.smbl = LargeSymbolFor(from.smbl.value_or(0));
    if (from.type == WaypointType::D108) return waypoint;
    waypoint.ident = Blanked(from.ident);
    waypoint.cmnt = UpperCase(Blanked(from.cmnt));
    return waypoint;
  }
  static void Read(PacketReader& wire, Waypoint& waypoint) {
    WaypointDetails details;
    Walk(wire, waypoint, details);
    waypoint.details = details;
    waypoint.symbol_set = SymbolSet::Large;
  }
  static void Write(PacketWriter& wire, const Waypoint& waypoint) { Walk(wire, waypoint, *waypoint.details); }

 private:
  template <typename Wire, typename Record, typename Details>
  static void Walk(Wire& wire, Record& waypoint, Details& details) {
    wire.Byte(details.wpt_class);
    wire.Byte(waypoint.color);
    wire.Byte(waypoint.dspl);
    wire.Byte(details.attr);
    wire.Word(waypoint.smbl);
    wire.Bytes(details.subclass);
    wire.Angle(waypoint.lat_deg);
    wire.Angle(waypoint.lon_deg);
    wire.Height(waypoint.alt_m);
    wire.Height(waypoint.dpth_m);
    wire.Distance(waypoint.dist_m);
    wire.BareText(details.state, 2);
    wire.BareText(details.country, 2);
    wire.ZeroText(waypoint.ident);
    wire.ZeroText(waypoint.cmnt);
    wire.ZeroText(details.facility);
    wire.ZeroText(details.city);
    wire.ZeroText(details.addr);
    wire.ZeroText(details.cross_road);
  }
};

}  // namespace walrim
