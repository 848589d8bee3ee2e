// The standard data file: one line a record, columns separated by TAB.
//
//   file    = [ident-line] *line           lines end with CR LF
//   line    = tag *(TAB column)
//   tag     = "WPT" | "RTH" | "RTP" | "TRH" | "TRP"
//   column  = text | '="' text '"'         no TAB inside, no escape
//
// Commas split columns too, but not in ="..." between TABs: that is one column, its commas and quotes are the text's.
//
// Writer and reader walk the same table of sections.
#pragma once

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/InternalData.h"
#include "data/Records.h"
#include "geo/GeneralLib.h"

namespace walrim {

struct Section;
struct WaypointValues;

/// A code and its name.
struct NamedCode {
  int code;
  std::string_view name;
};

/// Names of symbol, display and colour codes for one waypoint type; rows sorted by code. A code without a row has the
/// empty name.
struct NameTables {
  std::span<const NamedCode> SymbolNames;   ///< codes 0..18000
  std::span<const NamedCode> DisplayNames;  ///< codes 0..15
  std::span<const NamedCode> ColourNames;   ///< codes 0..255

  [[nodiscard]] static std::string_view NameOf(std::span<const NamedCode> names, int code);
};
/// The tables of every waypoint type, in the order of WaypointType.
using NameTablesByType = std::array<NameTables, WaypointTypeCount>;

/// How positions and times are written and read.
struct TextSettings {
  std::string degree_type = "D";  ///< angle notation of written lat and lon
  std::string datum = "WGS84";    ///< "WGS84" or "Tokyo"
  int utc_offset_hours = 9;
};

/// Column titles of a section after its tag, as header lines carry them; empty for an unknown tag.
[[nodiscard]] std::vector<std::string> ColumnTitles(std::string_view tag);

/// The header line of a section, without line end; empty for an unknown tag.
[[nodiscard]] std::string BuildHeaderLine(std::string_view tag);

/// Writes the lines of a data set.
class StandardWriter {
 public:
  StandardWriter(InternalData& data, const NameTablesByType& names, TextSettings settings);

  /// Appends the data line of a record, without line end. record is the waypoint slot, route or log number; point the
  /// point number of RTP (as the route numbers its points) or TRP (from 0). An unknown tag appends nothing.
  void AppendDataLine(std::string& out, std::string_view tag, int record, int point = 0);
  [[nodiscard]] std::string BuildDataLine(std::string_view tag, int record, int point = 0);

  /// Called before each waypoint, route and log with the kind, its number from 1 and how many there are.
  using Progress = std::function<void(DataKind, int number, int count)>;

  /// Appends all lines of a kind, each with CR LF: its header lines first where wanted, then the records in order. Log
  /// 0, where it has points, comes first. A kind without records appends nothing.
  void AppendKind(std::string& out, DataKind kind, bool with_header, const Progress& progress = {});

 private:
  [[nodiscard]] const NameTables& NamesOfSlot(int slot) const;
  void AppendWaypoint(std::string& out, int slot);
  void AppendRoutePoint(std::string& out, int route, int point);
  void AppendTrackPoint(std::string& out, int log, int point);
  void AppendLine(std::string& out, std::string_view tag, int record, int point = 0);
  void AppendWaypoints(std::string& out, bool with_header, const Progress& progress);
  void AppendRoutes(std::string& out, bool with_header, const Progress& progress);
  void AppendTracks(std::string& out, bool with_header, const Progress& progress);

  InternalData& data_;
  const NameTablesByType& names_;
  TextSettings settings_;
  WaypointRecord waypoint_;
  RoutePoint route_point_;
  TrackPoint track_point_;
};

/// What an import brought.
struct ImportSummary {
  std::array<int, DataKindCount> stored{};  ///< waypoints, routes, track logs that were added
  int route_points = 0;
  int track_points = 0;
  int skipped = 0;                ///< lines of a known section that were not stored (header lines do not count)
  int first_skipped_line = 0;     ///< number of the first of them, from 1
  std::string first_skipped_why;  ///< and the reason, in Japanese
  /// Lines that were stored although they have more filled columns than their section: most likely a comma inside a
  /// text cut it and moved what follows.
  int overfull = 0;
  int first_overfull_line = 0;     ///< number of the first of them, from 1
  int unread_times = 0;            ///< track points whose time is no date; stored without a time
  int first_unread_time_line = 0;  ///< number of the first of them, from 1
  [[nodiscard]] bool Received(DataKind kind) const;
};

/// Removes every double quote and every equals sign.
[[nodiscard]] std::string StripValue(std::string_view value);

/// Reads lines into a data set.
class StandardReader {
 public:
  StandardReader(InternalData& data, int utc_offset_hours);

  /// Stores one line (without line end). Lines with an unknown tag and header lines are ignored.
  void ReadLine(std::string_view line);
  /// Stores a line whose columns are split already.
  void StoreLine(std::span<const std::string_view> columns);
  /// Closes the input: the route and the log filled last get the number of points that were stored.
  void Finish();
  /// Reads a whole text: lines ended by CR LF, LF or CR; calls Finish.
  void ReadText(std::string_view text);

  [[nodiscard]] const ImportSummary& Summary() const { return summary_; }
  /// Number of the line that StoreLine is given next, from 1, where ReadLine does not count the lines.
  void SetLineNumber(int number) { line_number_ = number; }

 private:
  /// A column's text and what it means; most lines repeat the text of the line before.
  struct Remembered {
    std::string text;
    std::string meaning;
  };

  [[nodiscard]] static const Section* SectionOf(std::string_view tag);
  [[nodiscard]] static bool IsHeaderLine(const Section& section, std::span<const std::string_view> columns);
  /// A column's text: what stands in ="...", else the column without quotes and equals signs. Empty where the line has
  /// ended before it.
  [[nodiscard]] std::string_view Value(std::size_t column);
  [[nodiscard]] std::string_view StrippedValue(std::size_t column);
  /// The 18 columns from first on. Empty ones read as the bytes of when_empty, missing ones as no subclass.
  [[nodiscard]] Subclass ReadSubclass(std::size_t first, const Subclass& when_empty);
  void Skip(std::string_view why);
  void NoteOverfull(const Section& section);
  void NoteUnreadTime();

  // These return why the line cannot be stored; empty where it can.
  [[nodiscard]] std::string_view ReadNotation();
  [[nodiscard]] std::string_view ReadAngle(std::size_t column, double& degrees);
  [[nodiscard]] std::string_view ReadPosition(std::size_t lat_column, double& lat_deg, double& lon_deg);
  [[nodiscard]] std::string_view ReadWaypoint(WaypointValues& values);

  void ReadLink(D210Entry& link);
  void StoreWaypoint();
  void StoreRouteHeader();
  void StoreRoutePoint();
  void StoreTrackHeader();
  void StoreTrackPoint();
  void CloseRoute();
  void CloseTrack();

  InternalData& data_;
  int utc_offset_hours_;
  ImportSummary summary_;
  int line_number_ = 0;
  bool route_open_ = false;  ///< this input brought the cursor's route its header or a point
  bool track_open_ = false;
  bool routes_changed_ = false;  ///< a count was closed; Finish mirrors the counters once
  bool tracks_changed_ = false;
  Remembered degree_type_;
  Remembered datum_;
  std::array<std::string_view, MaxColumns> columns_;
  std::span<const std::string_view> line_;  ///< the columns of the line that is being stored
  std::vector<std::string> stripped_;       ///< texts of columns that had to be copied to be stripped
  RouteHeader route_header_;
  TrackHeader track_header_;
  D210Entry link_;
};

}  // namespace walrim
