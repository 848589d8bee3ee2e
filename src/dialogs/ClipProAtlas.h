// The dialog that completes a point from a map into a waypoint, without its widgets.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/GeneralWalrim.h"

namespace walrim {

inline constexpr int LargestSymbolCode = 18000;
inline constexpr int LargestDisplayCode = 15;

/// List entries "00018 : name" of every code that has a name, in ascending order.
[[nodiscard]] std::vector<std::string> SymbolEntries(const NameTables& names);
[[nodiscard]] std::vector<std::string> DisplayEntries(const NameTables& names);

/// The code of an entry: the number in its first five characters; 0 where there is none.
[[nodiscard]] int CodeOfEntry(std::string_view entry);

/// A completed waypoint; the position is on WGS84.
struct ClipWaypoint {
  double lat_deg = 0;
  double lon_deg = 0;
  std::string ident;
  std::string cmnt;
  int smbl = 0;
  int dspl = 0;
};

/// What Ok gives: the waypoint, or a message that says why there is none. Neither where no point is open.
struct ClipResult {
  std::optional<ClipWaypoint> waypoint;
  std::string refusal;
};

/// What the dialog holds while it is shown. The widgets of the same names show these fields and write them back.
class ClipProAtlas {
 public:
  /// The tables of the waypoint type in force; what they view must outlive the dialog.
  explicit ClipProAtlas(NameTables names) : names_(names) {}
  void SetNames(NameTables names) { names_ = names; }

  /// Opens the dialog for a point: fills the controls and both lists. lat and lon are decimal degrees ("D") on datum.
  /// The entries that were chosen last stay chosen while the lists offer them.
  void SetClip(std::string_view context, std::string_view lat, std::string_view lon, std::string_view datum,
               std::string_view ident, std::string_view comment);

  /// Rewrites ClipLat and ClipLon from "D" to "DMS" or back. Returns why it could not, then nothing was changed; empty
  /// on success.
  [[nodiscard]] std::string ClipPnt();

  /// Closes the dialog with the finished waypoint; with a refusal it stays open as it is.
  [[nodiscard]] ClipResult Ok();
  void Cancel();

  [[nodiscard]] bool Open() const { return open_; }
  /// The notation that ClipLat and ClipLon are in: "D" or "DMS".
  [[nodiscard]] std::string_view Notation() const { return notation_; }
  /// The caller's text and the datum of the position, kept from SetClip until Ok or Cancel.
  [[nodiscard]] const std::string& Context() const { return context_; }
  [[nodiscard]] const std::string& PointDatum() const { return datum_; }

  std::string ClipLat;
  std::string ClipLon;
  std::string ClipIdent;
  std::string ClipCmnt;
  std::string SmblType;  ///< the chosen entry
  std::string DsplType;
  std::vector<std::string> smbl_entries;
  std::vector<std::string> dspl_entries;

 private:
  NameTables names_;
  bool open_ = false;
  std::string_view notation_ = "D";
  std::string context_;
  std::string datum_;
};

}  // namespace walrim
