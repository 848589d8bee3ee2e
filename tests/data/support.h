// What the tests of the data set share: records, name tables, and a reader that is told lines.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "data/GeneralWalrim.h"
#include "data/InternalData.h"

namespace walrim {

inline WaypointRecord Waypoint(std::string_view ident, std::string_view lat = "35.5", std::string_view lon = "135.25") {
  WaypointRecord record;
  record[WaypointField::ident] = ident;
  record[WaypointField::lat] = lat;
  record[WaypointField::lon] = lon;
  return record;
}

inline RouteHeader Route(std::string_view comment, std::string_view points = "0", std::string_view number = "1") {
  RouteHeader header;
  header[RouteHeaderField::nmbr] = number;
  header[RouteHeaderField::cmnt] = comment;
  header[RouteHeaderField::rte_wpt_num] = points;
  return header;
}

inline TrackHeader Track(std::string_view ident, std::string_view points = "0", std::string_view shown = "TRUE") {
  TrackHeader header;
  header[TrackHeaderField::trk_pnt_num] = points;
  header[TrackHeaderField::dspl] = shown;
  header[TrackHeaderField::color] = "7";
  header[TrackHeaderField::trk_ident] = ident;
  return header;
}

inline TrackPointEntry PointAt(double lat_deg, double lon_deg, double time = 0, bool new_trk = false) {
  TrackPointEntry entry;
  entry.lat_deg = lat_deg;
  entry.lon_deg = lon_deg;
  entry.time = time;
  entry.new_trk = new_trk;
  return entry;
}

/// Two types of tables, so that a wrong one shows.
inline const NameTablesByType& Names() {
  static constexpr std::array<NamedCode, 3> OldSymbols{{{0, "dot symbol"}, {1, "house symbol"}, {10, "flag symbol"}}};
  static constexpr std::array<NamedCode, 3> Symbols{
      {{1, "white bell symbol"}, {18, "waypoint dot"}, {8196, "TracBack (feet) symbol"}}};
  static constexpr std::array<NamedCode, 2> Displays{{{0, "with waypoint name"}, {1, "by itself"}}};
  static const NameTablesByType names{NameTables{OldSymbols, Displays, {}}, NameTables{Symbols, Displays, {}},
                                      NameTables{OldSymbols, Displays, {}}, NameTables{Symbols, Displays, {}}};
  return names;
}

inline std::string Written(InternalData& data, const TextSettings& settings = {}, bool with_header = false) {
  StandardWriter writer(data, Names(), settings);
  std::string text;
  for (const DataKind kind : AllDataKinds)
    writer.AppendKind(text, kind, with_header);
  return text;
}

inline ImportSummary Read(InternalData& data, std::string_view text, int utc_offset_hours = 9) {
  StandardReader reader(data, utc_offset_hours);
  reader.ReadText(text);
  return reader.Summary();
}

/// Columns joined by TABs.
inline std::string Line(const std::vector<std::string>& columns) {
  std::string line;
  for (const std::string& column : columns)
    line += (line.empty() ? "" : "\t") + column;
  return line;
}

/// A waypoint line that ends after lon.
inline std::string ShortWaypoint(const std::string& ident, const std::string& lat = "35.5",
                                 const std::string& lon = "135.25") {
  return "WPT\tD\tWGS84\t" + ident + "\t" + lat + "\t" + lon;
}

inline std::string ShortRoutePoint(const std::string& ident) {
  return "RTP\tD\tWGS84\t" + ident + "\t35.5\t135.25";
}

inline std::string ShortTrackPoint(const std::string& lat = "35.5") {
  return "TRP\tD\tWGS84\t" + lat + "\t135.25";
}

}  // namespace walrim
