// The standard data file: one line a record, columns separated by TAB.
//
//   file    = [ident-line] *line           lines end with CR LF
//   line    = tag *(TAB column)
//   tag     = "WPT" | "RTH" | "RTP" | "TRH" | "TRP"
//   column  = text | '="' text '"'         no TAB inside, no escape
//
// Commas split columns too, but not in ="..." between TABs: that is one column, its commas and quotes are the text's.
#pragma once

#include <string>
#include <string_view>

#include "formats/Format.h"
#include "records/DataSet.h"

namespace walrim {

/// The kinds of lines.
enum class StandardLine { Waypoint, RouteHeader, RoutePoint, TrackHeader, TrackPoint };

/// The header line of a kind of line, without line end.
[[nodiscard]] std::string StandardHeaderLine(StandardLine line);

struct LineContext;

/// Writes the lines of single records, without line ends.
class StandardLineWriter {
 public:
  StandardLineWriter(AngleNotation notation, Datum datum, int utc_offset_hours);

  void Append(std::string& out, const Waypoint& waypoint) const;
  /// The header alone.
  void Append(std::string& out, const Route& route) const;
  /// A point of a route that came as a type; D201 has no links.
  void Append(std::string& out, const RoutePoint& point, RouteHeaderType route) const;
  /// The header alone.
  void Append(std::string& out, const TrackLog& log) const;
  /// before is the point before it in its log; null for the first.
  void Append(std::string& out, const TrackPoint& point, const TrackPoint* before) const;

 private:
  /// Appends what stands before a record's columns.
  LineContext Lead(std::string& out, StandardLine line) const;
  LineContext Lead(std::string& out, StandardLine line, const GeoPoint& position) const;

  AngleNotation notation_;
  Datum datum_;
  int utc_offset_hours_;
};

[[nodiscard]] ImportResult ReadStandardFile(LineSource& lines, DataSet& data, const ReadSettings& settings);
[[nodiscard]] WriteReport WriteStandardFile(TextOutput& out, const DataSet& data, const WriteSettings& settings);

}  // namespace walrim
