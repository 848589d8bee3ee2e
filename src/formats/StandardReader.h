// Reading the lines of the standard data file.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "formats/PositionReader.h"
#include "formats/RecordIntake.h"
#include "formats/StandardColumns.h"
#include "text/Columns.h"

namespace walrim {

/// Reads lines into a data set.
class StandardReader {
 public:
  StandardReader(DataSet& data, int utc_offset_hours) : intake_(data), utc_offset_hours_(utc_offset_hours) {}

  /// Stores one line (without line end), whose number is counted from 1. Lines with an unknown tag and header lines are
  /// ignored.
  void ReadLine(std::string_view line, int number);
  [[nodiscard]] const ImportResult& Result() { return intake_.Account(); }

 private:
  [[nodiscard]] bool IsHeaderLine(const StandardSection& section) const;
  /// A column's text; empty where the line has ended before it.
  [[nodiscard]] std::string_view Value(std::size_t column);
  void NoteOverfull(const StandardSection& section);
  /// Counts the line where it has no position.
  [[nodiscard]] bool ReadPosition(std::size_t lat_column, double& lat_deg, double& lon_deg);
  /// Whether the 18 columns from one on say that there is no subclass.
  [[nodiscard]] bool SaysNoSubclass(std::size_t first) const;
  [[nodiscard]] bool ReadWaypoint(Waypoint& waypoint);
  /// Reads the columns of a record that are there, from the line's column first on.
  template <typename Record>
  void ReadColumns(std::span<const StandardColumn<Record>> columns, std::size_t first, Record& record);

  void StoreWaypoint();
  void StoreRoute();
  void StoreRoutePoint();
  void StoreTrackLog();
  void StoreTrackPoint();

  RecordIntake intake_;
  int utc_offset_hours_;
  PositionReader positions_;
  std::array<std::string_view, MaxColumns> columns_;
  std::size_t column_count_ = 0;
  std::string scratch_;
};

}  // namespace walrim
