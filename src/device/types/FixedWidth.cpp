#include "device/types/FixedWidth.h"

#include "records/Symbols.h"
#include "text/Scan.h"

namespace walrim {

Waypoint BlankFixedWidth(WaypointType type) {
  Waypoint waypoint;
  waypoint.type = type;
  waypoint.smbl = 0;
  waypoint.ident.assign(IdentWidth, ' ');
  waypoint.cmnt.assign(CommentWidth, ' ');
  return waypoint;
}

std::string ZeroEnded(std::string_view text) {
  return UpperCase(TrimBlanks(Blanked(text))) + '\0';
}

Waypoint FixedWidthOf(const Waypoint& from, WaypointType type, EncodeNotes& notes) {
  NoteCutText(from.ident, IdentWidth, notes);
  NoteCutText(from.cmnt, CommentWidth, notes);
  Waypoint waypoint = from;
  if (from.type == type) return waypoint;
  waypoint.unused = 0;
  waypoint.ident = ZeroEnded(from.ident);
  waypoint.cmnt = ZeroEnded(from.cmnt);
  // A proximity distance that came as D108's is one here too.
  const bool has_distance = from.dist_m > 0 && from.dist_m < UnknownMetres;
  if (has_distance && waypoint.dst_m.value_or(0) == 0) waypoint.dst_m = from.dist_m;
  return waypoint;
}

void FitSmallSymbol(Waypoint& waypoint, EncodeNotes& notes) {
  const int code = waypoint.smbl.value_or(0);
  if (code <= LargestSmallSymbol && !HasLargeSymbol(waypoint)) return;
  const SmallSymbol small = SmallSymbolFor(code);
  waypoint.smbl = small.code;
  notes.replaced = notes.replaced || !small.exact;
}

}  // namespace walrim
