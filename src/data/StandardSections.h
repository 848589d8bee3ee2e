// The table of sections that the standard file's writer and reader walk.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "data/Records.h"

namespace walrim {

/// How a column is written.
enum class ColumnForm {
  Bare,
  Wrapped,  ///< as ="text", so that a spreadsheet keeps it as text
  WrappedTrimmed
};

struct Column {
  std::string_view prefix;
  std::string_view title;
  ColumnForm form;

  [[nodiscard]] std::string FullTitle() const { return std::string(prefix).append(title); }
};

/// One kind of line. Its columns are a record's fields in their order.
struct Section {
  std::string_view tag;
  bool positioned;  ///< DegreeType and Datum stand between the tag and the fields
  std::span<const Column> columns;

  /// Columns before the first field.
  [[nodiscard]] constexpr std::size_t Lead() const { return positioned ? 3 : 1; }
};

extern const Section WaypointSection;
extern const Section RouteHeaderSection;
extern const Section RoutePointSection;
extern const Section TrackHeaderSection;
extern const Section TrackPointSection;

/// The section of a tag in upper case; null for an unknown one.
[[nodiscard]] const Section* FindSection(std::string_view tag);

}  // namespace walrim
