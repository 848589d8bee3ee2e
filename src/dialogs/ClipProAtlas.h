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

/// An entry of a list, "00018 : name", and what it stands for.
struct CodeEntry {
  int code = 0;
  std::string text;
};

/// What the dialog holds while it is shown: its widgets show these fields and write them back.
struct ClipProAtlas {
  std::string lat;
  std::string lon;
  std::string ident;
  std::string cmnt;
  WaypointType type = WaypointType::D108;  ///< whose symbols and display modes are offered
  std::optional<int> smbl;                 ///< the code of the chosen entry
  std::optional<int> dspl;
  std::vector<CodeEntry> smbl_entries;
  std::vector<CodeEntry> dspl_entries;
  AngleNotation notation = AngleNotation::D;  ///< of lat and lon: D or DMS
  Datum datum = Datum::Wgs84;                 ///< of the position
  bool is_new = false;                        ///< the point comes from the user, not from a map
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

/// Fills the controls for a point, and both lists with every code of the type that has a name, in ascending order. The
/// codes that were chosen last stay chosen while the lists offer them.
void ShowClip(const MapPoint& point, WaypointType type, ClipProAtlas& clip);

/// Rewrites lat and lon from "D" to "DMS" or back. Returns why it could not, then nothing was changed; empty on
/// success.
[[nodiscard]] std::string SwitchClipNotation(ClipProAtlas& clip);

/// The finished waypoint, or why there is none yet.
[[nodiscard]] ClipResult FinishClip(const ClipProAtlas& clip);

}  // namespace walrim
