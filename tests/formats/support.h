// What the tests of the formats share.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "data/InternalData.h"
#include "formats/MpsWpt.h"
#include "formats/ProAtlas.h"

namespace walrim {

inline constexpr CivilTime Now{2002, 11, 15, 14, 5, 12};
inline constexpr std::array<bool, DataKindCount> EveryKind{true, true, true};

inline WaypointRecord Waypoint(std::string_view ident, std::string_view lat, std::string_view lon,
                               std::string_view comment) {
  WaypointRecord record;
  record[WaypointField::ident] = ident;
  record[WaypointField::lat] = lat;
  record[WaypointField::lon] = lon;
  record[WaypointField::cmnt] = comment;
  return record;
}

/// Adds a route with its points; returns its number in the data set.
inline int AddRoute(InternalData& data, std::string_view number, std::string_view comment,
                    const std::vector<WaypointRecord>& points) {
  RouteHeader header;
  header[RouteHeaderField::nmbr] = number;
  header[RouteHeaderField::cmnt] = comment;
  header[RouteHeaderField::rte_wpt_num] = std::to_string(points.size());
  const int route = data.AddRouteHeader(header);
  for (std::size_t i = 0; i < points.size(); ++i)
    (void)data.AddRoutePoint(RoutePoint{points[i], {}}, route, static_cast<int>(i));
  return route;
}

inline TrackPointEntry TrackedPoint(double lat_deg, double lon_deg, double time, bool new_trk) {
  TrackPointEntry entry;
  entry.lat_deg = lat_deg;
  entry.lon_deg = lon_deg;
  entry.time = time;
  entry.new_trk = new_trk;
  return entry;
}

inline int AddLog(InternalData& data, const std::vector<TrackPointEntry>& points) {
  TrackHeader header;
  header[TrackHeaderField::trk_pnt_num] = std::to_string(points.size());
  const int log = data.AddTrackHeader(header);
  for (std::size_t i = 0; i < points.size(); ++i)
    (void)data.AddTrackPoint(points[i], log, static_cast<int>(i));
  return log;
}

inline WptSettings Settings(std::string_view degree_type = "D", std::string_view datum = "WGS84",
                            int utc_offset_hours = 9, std::string_view output_type = "WPT+") {
  return {std::string(output_type), {std::string(degree_type), std::string(datum), utc_offset_hours}, Now};
}

inline std::string WrittenWpt(InternalData& data, const WptSettings& settings = Settings()) {
  return BuildWptText(data, EveryKind, settings);
}

inline ImportSummary ReadWpt(InternalData& data, std::string_view text, int utc_offset_hours = 9) {
  WptReader reader(data, utc_offset_hours);
  reader.ReadText(text);
  return reader.Summary();
}

/// Lines with CR LF behind each.
inline std::string Lines(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines)
    text += line + "\r\n";
  return text;
}

inline const std::string TokyoDatum = "Datum,Tokyo mean,Bessel 1841,739.845,0.10037483,-128,481,664";
inline const std::string ScriptDatum = "Datum,Tokyo mean ,Bessel 1841,739.845,0.10037483,-128,481,664";
inline const std::string Wgs84Datum = "Datum,WGS84,WGS84,0,0,0,0,0";

inline std::string ScriptOf(const std::vector<std::string>& lines, const MpsOptions& options = {}) {
  return ConvertWptToScript(Lines(lines), options, Now).text;
}

/// The statements of a script that draw: from the first one behind the groups to disp.
inline std::string DrawnPart(const std::string& script) {
  const std::size_t last_group = script.rfind("\t\tgroup\t");
  const std::size_t begin = script.find(";\r\n", last_group) + 3;
  return script.substr(begin, script.find("\t\tdisp\t") - begin);
}

}  // namespace walrim
