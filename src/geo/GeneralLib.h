// The angle notations and the splitters of the readers.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace walrim {

/// Converts an angle text from one notation into another.
/// Notations (compared exactly): "D" decimal degrees, "DM" dd.mm with the fraction of the minute behind (read only),
/// "DMS" dd.mmssss, "MPS" d/mm/ss.s, "PAO" d/mm/sssss (thousandths of a second).
/// Texts are read as the decimal digits that they are. An unknown source notation reads as 0 degrees; "DM" and unknown
/// target notations give the empty text. Throws std::out_of_range at a fourth "/" part.
[[nodiscard]] std::string ConvertAngle(std::string_view value, std::string_view from, std::string_view to);

/// Decimal degrees of an angle text as the double nearest to the value it writes; the reading half of ConvertAngle.
[[nodiscard]] double DegreesOfAngle(std::string_view value, std::string_view notation);

/// True for a notation name that ConvertAngle reads.
[[nodiscard]] bool IsAngleNotation(std::string_view name);

/// The most columns that a line may have.
inline constexpr std::size_t MaxColumns = 256;

/// Cuts a line at every TAB and "," into columns without their leading and trailing blanks; columns[0] is the first.
/// An empty line has one empty column. No quoting is known. The views point into line.
/// Throws std::out_of_range when there are more than MaxColumns.
void SplitColumns(std::string_view line, std::vector<std::string_view>& columns);
/// The same into a place of its own, with the number of columns as the result.
[[nodiscard]] std::size_t SplitColumns(std::string_view line, std::array<std::string_view, MaxColumns>& columns);
[[nodiscard]] std::vector<std::string_view> SplitColumns(std::string_view line);

/// The result of GetListPair. The count is half the number of items, with a fraction when that is odd.
struct ListPair {
  std::string key;
  std::string value;
  double count = 0;
};

/// Picks pair number k (from 1) of the comma list key,value,key,value... Line feeds are skipped; "&" is put in front of
/// the item it stands in, "!" is kept at its end. An empty list leaves key and value of pair as they are and sets the
/// count to 0; so does an item that is not there, for its part. Throws std::out_of_range above 5120 items.
void GetListPair(std::string_view list, std::size_t k, ListPair& pair);

}  // namespace walrim
