// Lines that are cut into columns.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace walrim {

/// The most columns that a line may have.
inline constexpr std::size_t MaxColumns = 256;

/// Cuts a line at every TAB and "," into columns without their leading and trailing blanks; columns[0] is the first.
/// Returns how many there are. An empty line has one empty column. No quoting is known. The views point into line.
/// Throws std::out_of_range when there are more than MaxColumns; those are set then.
[[nodiscard]] std::size_t SplitColumns(std::string_view line, std::array<std::string_view, MaxColumns>& columns);

}  // namespace walrim
