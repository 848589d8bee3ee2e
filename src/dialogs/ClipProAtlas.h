// The dialog that completes a point from a map into a waypoint, without its widgets.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/MapPoint.h"
#include "geo/AngleNotation.h"
#include "records/Waypoint.h"

namespace walrim {

/// What the dialog holds while it is shown. The widgets of the same names show these fields and write them back.
struct ClipProAtlas {
  std::string ClipLat;
  std::string ClipLon;
  std::string ClipIdent;
  std::string ClipCmnt;
  std::string SmblType;  ///< the chosen entry
  std::string DsplType;
  std::vector<std::string> smbl_entries;
  std::vector<std::string> dspl_entries;
  AngleNotation notation = AngleNotation::D;  ///< of ClipLat and ClipLon: D or DMS
  Datum datum = Datum::Wgs84;                 ///< of the position
};

/// A completed waypoint; the position is on WGS84.
struct ClipWaypoint {
  double lat_deg = 0;
  double lon_deg = 0;
  std::string ident;
  std::string cmnt;
  int smbl = 0;
  int dspl = 0;
};

/// What Ok gives: the waypoint, or a message that says why there is none.
struct ClipResult {
  std::optional<ClipWaypoint> waypoint;
  std::string refusal;
};

/// List entries "00018 : name" of every code of a waypoint type that has a name, in ascending order.
[[nodiscard]] std::vector<std::string> SymbolEntries(WaypointType type);
[[nodiscard]] std::vector<std::string> DisplayEntries(WaypointType type);

/// The code of an entry: the number in its first five characters; 0 where there is none.
[[nodiscard]] int CodeOfEntry(std::string_view entry);

/// Fills the controls and both lists for a point, as the dialog opens with them. The entries that were chosen last stay
/// chosen while the lists offer them.
void ShowClip(const MapPoint& point, WaypointType type, ClipProAtlas& clip);

/// Rewrites ClipLat and ClipLon from "D" to "DMS" or back. Returns why it could not, then nothing was changed; empty on
/// success.
[[nodiscard]] std::string SwitchClipNotation(ClipProAtlas& clip);

/// The finished waypoint, or why there is none yet.
[[nodiscard]] ClipResult FinishClip(const ClipProAtlas& clip);

}  // namespace walrim
