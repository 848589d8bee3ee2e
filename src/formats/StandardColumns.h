// The columns of the standard file's lines, which its writer and its reader walk.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "formats/StandardFile.h"

namespace walrim {

/// How a column is written.
enum class ColumnForm {
  Bare,
  Wrapped,  ///< as ="text", so that a spreadsheet keeps it as text
  WrappedTrimmed
};

/// What a line tells besides its record.
struct LineContext {
  AngleNotation notation;
  int utc_offset_hours;
  GeoPoint position;         ///< the record's, on the datum of the line
  const TrackPoint* before;  ///< the track point before it in its log; null for the first
};

/// A column of Record: a text, or what write appends.
template <typename Record>
struct StandardColumn {
  std::string_view title;
  ColumnForm form;
  std::string_view (*text)(const Record& record);
  void (*write)(std::string& out, const Record& record, const LineContext& context);
  /// Puts a column's text into a record; null where nothing is read from it, or the position, which is read as a whole.
  void (*read)(Record& record, std::string_view text);
};

inline constexpr std::size_t LatColumn = 1;  ///< of a waypoint; the longitude follows
inline constexpr std::size_t SubclassColumn = 12;
inline constexpr std::size_t LinkSubclassColumn = 1;
inline constexpr std::size_t TrackLatColumn = 0;
inline constexpr std::size_t TrackTimeColumn = 2;

[[nodiscard]] std::span<const StandardColumn<Waypoint>> WaypointColumns();
/// Those of a route point's waypoint.
[[nodiscard]] std::span<const StandardColumn<Waypoint>> RouteWaypointColumns();
[[nodiscard]] std::span<const StandardColumn<RoutePoint>> LinkColumns();
[[nodiscard]] std::span<const StandardColumn<Route>> RouteColumns();
[[nodiscard]] std::span<const StandardColumn<TrackLog>> TrackLogColumns();
[[nodiscard]] std::span<const StandardColumn<TrackPoint>> TrackPointColumns();

/// A kind of line.
struct StandardSection {
  StandardLine line;
  std::string_view tag;
  bool positioned;  ///< DegreeType and Datum stand between the tag and the record's columns
  std::size_t column_count;
  std::string (*title)(std::size_t column);

  /// Columns before the record's.
  [[nodiscard]] constexpr std::size_t Lead() const { return positioned ? 3 : 1; }
};

[[nodiscard]] const StandardSection& SectionOf(StandardLine line);
/// The section of a tag as a file has it; null for an unknown one.
[[nodiscard]] const StandardSection* SectionOfTag(std::string_view tag);

}  // namespace walrim
