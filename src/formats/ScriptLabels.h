// The label and info texts of a script's statements: what they say to people, and what gives the records back.
//
//   waypoint     str  ident field              info  "[WP]<" ident "><" comment ">"
//   route        str  "RtNo:" n " RpNum:" n    info  "[RT]<" comment ">"
//   route point  str  ident or name field      info  "RP:" n "<" ident "><" comment ">"
//   track log    str  "[TR]#" n                info  "[TR]#" n statistics
//   track point  str  time                     info  "[TR]#" n " TP:" n " " date " " time intervals
//
// "<>" is an empty ident or comment. The first "><" ends the ident, so that only this pair inside an ident has to be
// written in full width; a comment holds anything.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "text/Dates.h"

namespace walrim {

struct ScriptGroup {
  static constexpr std::string_view Waypoint = "5131";
  static constexpr std::string_view Route = "5132";
  static constexpr std::string_view RoutePoint = "5133";
  static constexpr std::string_view RoutePointOrigin = "5133.1";
  static constexpr std::string_view RoutePointDestination = "5133.2";
  static constexpr std::string_view TrackLog = "5134";
  static constexpr std::string_view TrackPoint = "5135";
};

/// Left-aligned and padded with blanks to six characters; a longer text is kept whole.
[[nodiscard]] std::string IdentField(std::string_view ident);

/// Begins the info of a waypoint.
inline constexpr std::string_view WaypointMark = "[WP]";

struct PointTexts {
  std::string_view ident;
  std::string_view comment;
};
[[nodiscard]] std::string WaypointInfo(std::string_view ident, std::string_view comment);
[[nodiscard]] std::optional<PointTexts> ParseWaypointInfo(std::string_view info);
[[nodiscard]] std::string RoutePointInfo(std::size_t number, std::string_view ident, std::string_view comment);
[[nodiscard]] std::optional<PointTexts> ParseRoutePointInfo(std::string_view info);

[[nodiscard]] std::string RouteLabel(std::string_view number, std::size_t point_count);
/// The route's number.
[[nodiscard]] std::optional<std::string_view> ParseRouteLabel(std::string_view label);
[[nodiscard]] std::string RouteInfo(std::string_view comment);
/// The route's comment; empty for another text.
[[nodiscard]] std::string_view ParseRouteInfo(std::string_view info);

[[nodiscard]] std::string LogLabel(std::size_t log);
/// The log's number.
[[nodiscard]] std::optional<std::string_view> ParseLogLabel(std::string_view label);
/// log and point are counted from 1; text begins with the point's date and time.
[[nodiscard]] std::string TrackPointInfo(std::size_t log, std::size_t point, std::string_view text);
struct TrackPointMark {
  std::string_view log;  ///< the log's number
  std::size_t point = 0;
  std::optional<CivilTime> moment;
};
[[nodiscard]] std::optional<TrackPointMark> ParseTrackPointInfo(std::string_view info);

}  // namespace walrim
