// Reads the standard data file into a receiver's memory.
//
// A line is a record, its columns separated by TAB alone (so that a memory can hold texts with commas), a column
// perhaps wrapped as ="...". The first column is the tag, in either case:
//   WPT  DegreeType Datum ident lat lon cmnt smbl (notes) dspl (notes) dst color wpt_class attr subclass*18
//        alt dpth dist state cc idents comment facility city addr cross_road
//   RTH  nmbr cmnt rte_wpt_num
//   RTP  DegreeType Datum, then as WPT, then the link's class subclass*18 ident
//   TRH  trk_pnt_num hdr.dspl hdr.color hdr.trk_ident
//   TRP  DegreeType Datum lat lon time new_trk alt dpth leg_dist
// Anything else, a line whose position cannot be read, and a point before the first header of its kind are skipped.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "receiver/HeldContents.h"

namespace walrim {

/// Contents, or what stood in their way.
struct MemoryFileResult {
  std::optional<HeldContents> contents;
  std::string problem;
  int skipped = 0;             ///< lines that were none, header lines apart
  int first_skipped_line = 0;  ///< number of the first of them, from 1
};

/// Reads the bytes of a standard file, UTF-8 or code page 932, whose times are local, utc_offset_hours ahead of UTC.
/// A file without any record, or with more records of a kind than one transfer can announce, is refused.
[[nodiscard]] MemoryFileResult ParseMemoryFile(std::string_view bytes, int utc_offset_hours);

/// ParseMemoryFile on the file at path. A problem names the path.
[[nodiscard]] MemoryFileResult LoadMemoryFile(const std::string& path, int utc_offset_hours);

/// Degrees of an angle in the notation "D", "DM", "DMS", "MPS" or "PAO"; nothing when it is none.
[[nodiscard]] std::optional<double> DegreesOfNotation(std::string_view text, std::string_view notation);

}  // namespace walrim
