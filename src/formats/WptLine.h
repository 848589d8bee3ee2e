// The lines of a WPT+ text: a command word and its fields.
//
//   text   = [datum] *line                               lines end with CR LF; CR LF, LF and CR are read
//   datum  = "Datum," name "," ellipsoid 5*("," number)
//   line   = "WP" point | "RN," number "," comment | "RP" point | "TP" track-point
//   point  = "," form "," ident "," lat "," lon "," date "," time "," comment
//   track-point = "," form "," lat "," lon "," date "," time "," new-track-flag
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "geo/Datum.h"

namespace walrim {

enum class WptCommand : std::uint8_t { Datum, Waypoint, Route, RoutePoint, TrackPoint, Unknown };

inline constexpr std::size_t WptFieldCount = 7;

/// What one line says.
struct WptLine {
  WptCommand command = WptCommand::Unknown;
  /// The fields after the command; of Datum the whole rest; of an unknown command its word. Fields that the line ends
  /// before are empty.
  std::array<std::string_view, WptFieldCount> fields;
  bool overfull = false;  ///< more than blanks stands behind the last field: a comma cut it
};

/// Takes a line apart, which is more than blanks. Items are delimited by commas; blanks and TABs around one are left
/// out, and one in double quotes may hold commas.
[[nodiscard]] WptLine ReadWptLine(std::string_view line);

/// Takes the next item and the comma behind it.
[[nodiscard]] std::string_view TakeWptItem(std::string_view& rest);

/// The text without the blanks and TABs around it.
[[nodiscard]] std::string_view WithoutWptBlanks(std::string_view text);

/// A text as a line carries it: without the blanks around it, and with a blank for what would end a line or a field of
/// a table.
[[nodiscard]] std::string WptText(std::string_view text);
/// Whether reading cuts a text of a line at what it holds.
[[nodiscard]] bool BreaksWptLine(std::string_view text);

/// The Datum line of a datum.
[[nodiscard]] std::string_view DatumLine(Datum datum);
/// The datum's name that the field of a Datum line begins with: "Tokyo", "WGS84", or what else stands there.
[[nodiscard]] std::string_view DatumOfField(std::string_view field);

}  // namespace walrim
