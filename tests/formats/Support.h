// What the tests of the formats share: records, and texts that are read and written in a line.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "formats/Format.h"

namespace walrim {

inline constexpr CivilTime Now{2002, 11, 15, 14, 5, 12};

inline Waypoint Named(std::string_view ident, double lat_deg = 35.5, double lon_deg = 135.25,
                      std::string_view comment = "") {
  Waypoint waypoint;
  waypoint.ident = ident;
  waypoint.cmnt = comment;
  waypoint.lat_deg = lat_deg;
  waypoint.lon_deg = lon_deg;
  return waypoint;
}

inline Route Numbered(int number, std::string_view comment, const std::vector<Waypoint>& points = {}) {
  Route route;
  route.nmbr = static_cast<std::uint8_t>(number);
  route.cmnt = comment;
  for (const Waypoint& point : points)
    route.points.push_back({point, {}});
  return route;
}

inline TrackPoint At(double lat_deg, double lon_deg, std::optional<GarminSeconds> time = {}, bool new_trk = false) {
  TrackPoint point;
  point.lat_deg = lat_deg;
  point.lon_deg = lon_deg;
  point.time = time;
  point.new_trk = new_trk;
  return point;
}

inline void AddLog(DataSet& data, const std::vector<TrackPoint>& points, TrackLog log = {}) {
  (void)data.Begin(std::move(log));
  for (const TrackPoint& point : points)
    (void)data.Add(point);
}

inline WriteSettings Settings(AngleNotation notation = AngleNotation::D, Datum datum = Datum::Wgs84,
                              int utc_offset_hours = 9) {
  WriteSettings settings;
  settings.notation = notation;
  settings.datum = datum;
  settings.utc_offset_hours = utc_offset_hours;
  settings.now = Now;
  return settings;
}

/// The text of a data set, and what its writer had to tell.
inline std::pair<std::string, WriteReport> WriteText(FormatId id, const DataSet& data, const WriteSettings& settings) {
  std::string text;
  TextOutput out([&text](const std::string& lines) { text += lines; });
  const WriteReport report = FormatOf(id).write(out, data, settings);
  out.Flush();
  return {text, report};
}
inline std::string Written(FormatId id, const DataSet& data, const WriteSettings& settings = Settings()) {
  return WriteText(id, data, settings).first;
}

inline ImportResult Read(FormatId id, DataSet& data, std::string_view text, int utc_offset_hours = 9) {
  LineSource lines(text, TextEncoding::Utf8);
  return FormatOf(id).read(lines, data, {utc_offset_hours});
}

/// Lines with CR LF behind each.
inline std::string Lines(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines)
    text += line + "\r\n";
  return text;
}

inline const std::string TokyoDatum = "Datum,Tokyo mean,Bessel 1841,739.845,0.10037483,-128,481,664";
inline const std::string Wgs84Datum = "Datum,WGS84,WGS84,0,0,0,0,0";

}  // namespace walrim
